#include "App/LastDictation.h"

#include <utility>

namespace talmo {

std::optional<QString> LastDictation::text() const
{
    return m_cleaned.isEmpty() ? rawText() : m_cleaned;
}

std::optional<QString> LastDictation::rawText() const
{
    return m_raw.isEmpty() ? std::nullopt : std::optional(m_raw);
}

void LastDictation::noteHeard(const QString &transcript)
{
    if (transcript.trimmed().isEmpty()) {
        return;
    }
    if (std::exchange(m_isNew, false)) {
        m_cleaned.clear();
    }
    m_raw = transcript;
}

void LastDictation::noteCleaned(const QString &text)
{
    m_cleaned = text;
}

RememberedTranscriptionService::RememberedTranscriptionService(std::shared_ptr<TranscriptionService> service,
                                                               std::shared_ptr<LastDictation> last)
    : ForwardingTranscriptionService(std::move(service)),
      m_last(std::move(last))
{
}

QCoro::Task<void> RememberedTranscriptionService::startTranscription(std::shared_ptr<RecorderService> recorder,
                                                                     QString locale, UpdateHandler onUpdate,
                                                                     ErrorHandler onError)
{
    m_last->begin();
    auto rememberUpdate = [last = m_last, onUpdate = std::move(onUpdate)](const QString &text) {
        last->noteHeard(text);
        onUpdate(text);
    };
    return service()->startTranscription(std::move(recorder), locale, std::move(rememberUpdate), std::move(onError));
}

QCoro::Task<QString> RememberedTranscriptionService::stopTranscription()
{
    return stop(service(), m_last);
}

QCoro::Task<QString> RememberedTranscriptionService::stop(std::shared_ptr<TranscriptionService> service,
                                                          std::shared_ptr<LastDictation> last)
{
    const QString transcript = co_await service->stopTranscription();
    last->noteHeard(transcript);
    co_return transcript;
}

RememberedCleanupService::RememberedCleanupService(std::shared_ptr<CleanupService> service,
                                                   std::shared_ptr<LastDictation> last)
    : m_service(std::move(service)),
      m_last(std::move(last))
{
}

QCoro::Task<QString> RememberedCleanupService::cleanup(QString transcript, bool aiCleanupEnabled,
                                                       bool conciseTextEnabled, TextTone textTone,
                                                       QStringList dictionaryWords)
{
    return remember(m_service->cleanup(transcript, aiCleanupEnabled, conciseTextEnabled, textTone, dictionaryWords),
                    m_service, m_last);
}

QCoro::Task<QString> RememberedCleanupService::remember(QCoro::Task<QString> cleaning,
                                                        std::shared_ptr<CleanupService> /*service*/,
                                                        std::shared_ptr<LastDictation> last)
{
    const QString text = co_await cleaning;
    last->noteCleaned(text);
    co_return text;
}

} // namespace talmo
