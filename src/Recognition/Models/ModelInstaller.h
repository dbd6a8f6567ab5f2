#pragma once

#include "Base/Clock.h"
#include "Base/Error.h"
#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/Models/ModelStore.h"

#include <QCoro/QCoroTask>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace talmo {

/// The progress of an installation.
struct ModelProgress {
    enum class Phase { Downloading, Checking, Unpacking, Trying };
    Phase phase = Phase::Downloading;
    /// In bytes; `total` is nullopt if unknown.
    qint64 done = 0;
    std::optional<qint64> total;
    /// Of the download; nullopt until it has been measured.
    std::optional<double> bytesPerSecond;

    /// From 0 to 1; nullopt if the total is unknown.
    std::optional<double> share() const;
    static QString english(const char *source) { return QString::fromUtf8(source); }
    /// Looks up a marked text in the user's language.
    using Lookup = std::function<QString(const char *source)>;
    /// "Downloading: 12 of 120 MB, 3.1 MB/s, 35 s left". In English unless `text` translates it.
    QString description(const Lookup &text = english) const;
};

/// The model works, but not in real time.
class ModelTooSlow : public Error {
public:
    /// `shareOfSpeech`: as in ModelReport.
    explicit ModelTooSlow(double shareOfSpeech);
};

/// What the user has agreed to.
struct InstallationTerms {
    /// A file other than the one on record is accepted.
    bool acceptsRenewed = false;
    /// A model that needs a larger share of the time spoken is not installed; nullopt to install any.
    std::optional<double> largestShareOfSpeech;
    /// If the model is already installed, installs only what it needs.
    bool keepsInstalled = false;
};

/// Installs models from the catalogue into the store: download, checksum, unpacking, test; only then does the model
/// become visible. A thread with an event loop, which is blocked while verifying and unpacking.
class ModelInstaller {
public:
    using OnProgress = std::function<void(const ModelProgress &)>;
    /// The share of the time spoken that the engine needs with the model in that folder; nullopt if it was not
    /// measured. Throws Error if the engine cannot use it. May take as long as loading it.
    using Try = std::function<std::optional<double>(const QString &folder)>;

    ModelInstaller(ModelStore store, std::shared_ptr<Clock> clock, Try tryModel);

    /// Throws Error with a message for the user, ModelTooSlow, or Cancelled if a stop is requested, on any thread. The
    /// download is kept for the next attempt unless it turned out to be unusable.
    QCoro::Task<void> install(ModelEntry entry, OnProgress onProgress, std::stop_token stop,
                              InstallationTerms terms = {}) const;

    const ModelStore &store() const { return m_store; }

private:
    ModelStore m_store;
    std::shared_ptr<Clock> m_clock;
    Try m_try;
};

} // namespace talmo
