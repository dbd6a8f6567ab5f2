#pragma once

#include "Base/Clock.h"
#include "Base/Observable.h"
#include "Base/SerialExecutor.h"
#include "Recognition/Models/ModelInstaller.h"

#include <QFuture>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace talmo {

/// Installs and removes models, one at a time, on its own thread. Announces changes. Main thread.
class SpeechModels final : public Observable {
    Q_OBJECT

public:
    struct Installation {
        ModelEntry entry;
        ModelProgress progress;
    };

    SpeechModels(ModelInstaller installer, ModelCatalogue catalogue);
    /// Cancels the current installation.
    ~SpeechModels() override;

    const ModelCatalogue &catalogue() const { return m_catalogue; }
    const ModelStore &store() const { return m_store; }
    std::optional<Installation> installation() const { return m_installation; }
    /// The last error; empty after a success.
    QString problem() const { return m_problem; }

    /// Finishes when the model is installed; a call for the model already being installed joins that installation.
    /// Fails with Error or Cancelled.
    QFuture<void> install(const ModelEntry &entry);
    void cancel();
    QFuture<void> remove(const QString &name);

private:
    static QCoro::Task<void> follow(QPointer<SpeechModels> self, QFuture<void> work,
                                    std::shared_ptr<Completion<void>> end);
    QFuture<void> run(QFuture<void> work);
    void setInstallation(std::optional<Installation> installation);

    std::shared_ptr<ModelInstaller> m_installer;
    ModelStore m_store;
    ModelCatalogue m_catalogue;
    std::shared_ptr<SerialExecutor> m_mainExecutor;
    std::shared_ptr<SerialExecutor> m_executor;
    std::optional<Installation> m_installation;
    QFuture<void> m_end;
    std::stop_source m_stop;
    QString m_problem;
};

} // namespace talmo
