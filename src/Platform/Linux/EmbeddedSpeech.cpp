#include "Platform/Linux/EmbeddedSpeech.h"

#include "Base/Error.h"
#include "Base/Task.h"

#include <QCoro/QCoroFuture>

#include <QStandardPaths>

#include <utility>

namespace talmo {

namespace {

constexpr Duration idleTime = std::chrono::minutes(10);

} // namespace

EmbeddedSpeech::EmbeddedSpeech(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                               std::function<QString()> microphoneName)
    : m_executor(std::move(executor)),
      m_clock(std::move(clock)),
      m_platform(std::make_shared<PocketSphinxPlatform>(
          m_executor, QString(),
          MicrophoneKnowledge{std::move(microphoneName),
                              std::make_shared<MicrophoneMemory>(MicrophoneMemory::standardPath())}))
{
}

QString EmbeddedSpeech::pronunciationsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/talmo/pronunciations.txt");
}

void EmbeddedSpeech::setWords(const QStringList &words)
{
    // Off the main thread, for the disk's sake, and before the recording that comes next, since that is decoded there.
    m_executor->post([platform = m_platform, words] {
        platform->setVocabulary({words, Pronunciation::readSoundsLike(pronunciationsPath())});
    });
}

void EmbeddedSpeech::noteUse()
{
    m_idle.request_stop();
    m_idle = std::stop_source();
    logEscapes(unloadLater(m_platform, m_clock, m_idle.get_token()));
}

QCoro::Task<void> EmbeddedSpeech::unloadLater(std::shared_ptr<PocketSphinxPlatform> platform,
                                              std::shared_ptr<Clock> clock, std::stop_token stop)
{
    try {
        co_await clock->sleep(idleTime, stop);
    } catch (const Cancelled &) {
        co_return; // Somebody dictates again, or Talmo ends.
    }
    platform->unload();
}

} // namespace talmo
