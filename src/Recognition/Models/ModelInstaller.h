#pragma once

#include "Base/Clock.h"
#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/Models/ModelStore.h"

#include <QCoro/QCoroTask>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace talmo {

/// How far an installation has come.
struct ModelProgress {
    enum class Phase { Downloading, Checking, Unpacking, Trying };
    Phase phase = Phase::Downloading;
    /// Bytes; none where the whole is not known.
    qint64 done = 0;
    std::optional<qint64> total;

    /// From 0 to 1; none where the whole is not known.
    std::optional<double> share() const;
    /// "Downloading: 12 of 120 MB"
    QString description() const;
};

/// Puts models of the catalogue into the store: download, checksum, unpacking, trial, and only then the model is seen.
/// A thread with an event loop, which it holds up while it checks and unpacks.
class ModelInstaller {
public:
    using OnProgress = std::function<void(const ModelProgress &)>;
    /// Throws Error when the recogniser cannot use the model in that folder. May take as long as loading it does.
    using Try = std::function<void(const QString &folder)>;

    ModelInstaller(ModelStore store, std::shared_ptr<Clock> clock, Try tryModel);

    /// Throws Error with what a person can do about it, Cancelled when a stop is requested, on any
    /// thread. What has been downloaded stays for the next try, unless it turned out to be of no use.
    QCoro::Task<void> install(ModelEntry entry, OnProgress onProgress, std::stop_token stop) const;

    const ModelStore &store() const { return m_store; }

private:
    ModelStore m_store;
    std::shared_ptr<Clock> m_clock;
    Try m_try;
};

} // namespace talmo
