#include "Recognition/Models/SpeechModels.h"

#include "Base/DetailedError.h"
#include "Base/Log.h"
#include "Base/Task.h"

#include <QCoro/QCoroFuture>

#include <QPointer>

#include <utility>

namespace talmo {

SpeechModels::SpeechModels(RecogniserInstaller installer, ModelCatalogue catalogue,
                           std::function<bool(const ModelEntry &)> isOffered)
    : m_installer(std::make_shared<RecogniserInstaller>(std::move(installer))),
      m_store(m_installer->store()),
      m_catalogue(std::move(catalogue)),
      m_isOffered(std::move(isOffered)),
      m_mainExecutor(SerialExecutor::onCurrentThread())
{
    m_catalogue.setOffered(m_isOffered);
}

SpeechModels::~SpeechModels()
{
    m_stop.request_stop();
}

QFuture<void> SpeechModels::install(const ModelEntry &entry, const InstallationTerms &terms)
{
    if (m_installation) {
        if (m_installation->entry.id == entry.id) {
            return m_end;
        }
        return makeFailedFuture<void>(std::make_exception_ptr(
            Error(QStringLiteral(
                      QT_TRANSLATE_NOOP("Talmo", "“%1” is still being installed. Wait for it to finish, or cancel it."))
                      .arg(m_installation->entry.title))));
    }
    m_stop = std::stop_source();
    setInstallation(Installation{entry, {}});
    generalLog().info("installing the speech model %@ from %@", {entry.id, entry.address.toString()});
    const ModelInstaller::OnProgress onProgress = [self = QPointer(this),
                                                   executor = m_mainExecutor](const ModelProgress &progress) {
        executor->post([self, progress] {
            if (self && self->m_installation) {
                self->setInstallation(Installation{self->m_installation->entry, progress});
            }
        });
    };
    if (!m_executor) {
        m_executor = SerialExecutor::onNewThread(QStringLiteral("talmo-install"));
    }
    return run(m_executor->run<void>([installer = m_installer, entry, onProgress, stop = m_stop.get_token(), terms] {
        return installer->install(entry, onProgress, stop, terms);
    }));
}

QFuture<void> SpeechModels::remove(const QString &name)
{
    if (!m_executor) {
        m_executor = SerialExecutor::onNewThread(QStringLiteral("talmo-install"));
    }
    return run(m_executor->call([store = m_store, name] {
        const auto lock = store.lock();
        store.remove(name);
    }));
}

void SpeechModels::cancel()
{
    m_stop.request_stop();
}

QFuture<void> SpeechModels::run(QFuture<void> work)
{
    auto end = Completion<void>::make();
    m_end = end->future();
    logEscapes(follow(this, std::move(work), std::move(end)));
    return m_end;
}

QCoro::Task<void> SpeechModels::follow(QPointer<SpeechModels> self, QFuture<void> work,
                                       std::shared_ptr<Completion<void>> end)
{
    std::exception_ptr error;
    QString problem;
    try {
        co_await work;
    } catch (const Cancelled &) {
        error = std::current_exception();
    } catch (...) {
        error = std::current_exception();
        problem = localizedDescription(error);
        generalLog().error("a speech model could not be installed or removed: %@", {wholeDescription(error)});
    }
    if (self) {
        self->m_problem = problem;
        self->m_catalogue.setOffered(self->m_isOffered);
        self->setInstallation(std::nullopt);
    }
    if (error) {
        end->fail(error);
    } else {
        end->finish();
    }
}

void SpeechModels::setInstallation(std::optional<Installation> installation)
{
    publish(m_installation, std::move(installation));
}

} // namespace talmo
