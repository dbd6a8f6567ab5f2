#include "Platform/Linux/SpeechEngines.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Task.h"

#include <QCoro/QCoroFuture>

#include <QDir>
#include <QStandardPaths>

#include <utility>

namespace talmo {

namespace {

constexpr Duration idleTime = std::chrono::minutes(10);

} // namespace

SpeechEngines::SpeechEngines(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                             std::function<QString()> microphoneName, const Configuration &configuration)
    : m_executor(std::move(executor)),
      m_clock(std::move(clock)),
      m_embedded(std::make_shared<PocketSphinxPlatform>(
          m_executor, QString(),
          MicrophoneKnowledge{std::move(microphoneName),
                              std::make_shared<MicrophoneMemory>(MicrophoneMemory::standardPath())}))
{
    if (!configuration.isEmbeddedOnly) {
        findModels(configuration);
    }
    std::vector<std::shared_ptr<SpeechPlatform>> platforms(m_neural.begin(), m_neural.end());
    platforms.push_back(m_embedded);
    m_platform = std::make_shared<ChosenSpeechPlatform>(std::move(platforms));
}

void SpeechEngines::findModels(const Configuration &configuration)
{
    if (configuration.modelsFolder.isEmpty()) {
        return; // An empty path would stand for wherever the program happens to run.
    }
    const QDir folder(configuration.modelsFolder);
    for (const auto &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        try {
            m_neural.push_back(std::make_shared<SherpaPlatform>(m_executor, configuration.neuralLibrary,
                                                                folder.filePath(name), configuration.checkModel));
        } catch (const Error &error) {
            generalLog().error("a speech model is not used: %@", {error.localizedDescription()});
        }
    }
    if (!m_neural.empty()) {
        m_checker = SerialExecutor::onNewThread(QStringLiteral("talmo-models"));
    }
    for (const auto &platform : m_neural) {
        platform->check(*m_checker);
    }
}

QFuture<void> SpeechEngines::modelsChecked()
{
    return m_checker ? m_checker->call([] {}) : ready();
}

QString SpeechEngines::standardModelsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/talmo/models");
}

void SpeechEngines::warmUp(const QString &locale)
{
    for (const auto &platform : m_neural) {
        if (platform->speaks(locale) && platform->isUsable()) {
            platform->warmUp();
            return;
        }
    }
    m_embedded->warmUp();
}

QString SpeechEngines::pronunciationsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/talmo/pronunciations.txt");
}

void SpeechEngines::setWords(const QStringList &words)
{
    // Off the main thread, for the disk's sake, and before the recording that comes next, since that is decoded there.
    m_executor->post([platform = m_embedded, words] {
        platform->setVocabulary({words, Pronunciation::readSoundsLike(pronunciationsPath())});
    });
}

void SpeechEngines::noteUse()
{
    m_idle.request_stop();
    m_idle = std::stop_source();
    const auto unload = [embedded = m_embedded, neural = m_neural] {
        embedded->unload();
        for (const auto &platform : neural) {
            platform->unload();
        }
    };
    logEscapes(unloadLater(unload, m_clock, m_idle.get_token()));
}

QCoro::Task<void> SpeechEngines::unloadLater(std::function<void()> unload, std::shared_ptr<Clock> clock,
                                             std::stop_token stop)
{
    try {
        co_await clock->sleep(idleTime, stop);
    } catch (const Cancelled &) {
        co_return; // Somebody dictates again, or Talmo ends.
    }
    unload();
}

} // namespace talmo
