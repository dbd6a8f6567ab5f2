#pragma once

#include "Base/Clock.h"
#include "Base/Observable.h"
#include "Base/SerialExecutor.h"
#include "Recognition/Models/RecogniserInstaller.h"

#include <QFuture>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace talmo {

/// Installs and removes models, one at a time, on its own thread. Announces changes. Main thread.
class SpeechModels final : public Observable {
    Q_OBJECT

public:
    struct Installation {
        ModelEntry entry;
        ModelProgress progress;
    };

    /// `isOffered`: see ModelCatalogue::setOffered(); asked again after every installation.
    SpeechModels(RecogniserInstaller installer, ModelCatalogue catalogue,
                 std::function<bool(const ModelEntry &)> isOffered);
    /// Cancels the current installation.
    ~SpeechModels() override;

    const ModelCatalogue &catalogue() const { return m_catalogue; }
    const ModelStore &store() const { return m_store; }
    std::optional<Installation> installation() const { return m_installation; }
    /// The last error; empty after a success.
    QString problem() const { return m_problem; }

    /// What installing the model would download; see RecogniserInstaller::partsOf().
    std::vector<ModelEntry> partsOf(const ModelEntry &entry) const { return m_installer->partsOf(entry, true); }
    const RecogniserInstaller &installer() const { return *m_installer; }

    /// Finishes when the model and what it needs are installed; a call for the model already being installed joins that
    /// installation. Fails with Error, ModelTooSlow or Cancelled.
    QFuture<void> install(const ModelEntry &entry, const InstallationTerms &terms = {});
    void cancel();
    QFuture<void> remove(const QString &name);

private:
    static QCoro::Task<void> follow(QPointer<SpeechModels> self, QFuture<void> work,
                                    std::shared_ptr<Completion<void>> end);
    QFuture<void> run(QFuture<void> work);
    void setInstallation(std::optional<Installation> installation);

    std::shared_ptr<RecogniserInstaller> m_installer;
    ModelStore m_store;
    ModelCatalogue m_catalogue;
    std::function<bool(const ModelEntry &)> m_isOffered;
    std::shared_ptr<SerialExecutor> m_mainExecutor;
    std::shared_ptr<SerialExecutor> m_executor;
    std::optional<Installation> m_installation;
    QFuture<void> m_end;
    std::stop_source m_stop;
    QString m_problem;
};

} // namespace talmo
