#include "App/TracedServices.h"

#include <utility>

namespace talmo {

using Stage = DictationTrace::Stage;

TracedHotkeyService::TracedHotkeyService(std::shared_ptr<HotkeyService> service, std::shared_ptr<DictationTrace> trace)
    : m_service(std::move(service)),
      m_trace(std::move(trace))
{
}

void TracedHotkeyService::setOnHotkeyDown(std::function<void()> callback)
{
    m_service->setOnHotkeyDown(std::move(callback));
}

void TracedHotkeyService::setOnHotkeyUp(std::function<void()> callback)
{
    m_service->setOnHotkeyUp([trace = m_trace, callback = std::move(callback)] {
        trace->note(Stage::Released);
        if (callback) {
            callback();
        }
    });
}

void TracedHotkeyService::start()
{
    m_service->start();
}

TracedRecorder::TracedRecorder(std::shared_ptr<RecorderService> recorder, std::shared_ptr<DictationTrace> trace)
    : m_recorder(std::move(recorder)),
      m_trace(std::move(trace))
{
}

void TracedRecorder::start(AudioBufferHandler onBuffer)
{
    m_recorder->start(std::move(onBuffer));
}

void TracedRecorder::stop()
{
    m_recorder->stop();
    m_trace->note(Stage::LastAudio);
}

TracedTranscriptionService::TracedTranscriptionService(std::shared_ptr<TranscriptionService> service,
                                                       std::shared_ptr<DictationTrace> trace)
    : m_service(std::move(service)),
      m_trace(std::move(trace))
{
}

QCoro::Task<ModelStatus> TracedTranscriptionService::modelStatus(QString locale)
{
    return m_service->modelStatus(locale);
}

QCoro::Task<void> TracedTranscriptionService::installModel(QString locale)
{
    return m_service->installModel(locale);
}

QCoro::Task<void> TracedTranscriptionService::startTranscription(std::shared_ptr<RecorderService> recorder,
                                                                 QString locale, UpdateHandler onUpdate,
                                                                 ErrorHandler onError)
{
    return started(m_service->startTranscription(std::move(recorder), locale, std::move(onUpdate), std::move(onError)),
                   m_service, m_trace);
}

QCoro::Task<void> TracedTranscriptionService::started(QCoro::Task<void> starting,
                                                      std::shared_ptr<TranscriptionService> /*service*/,
                                                      std::shared_ptr<DictationTrace> trace)
{
    co_await starting;
    trace->note(Stage::Recording);
}

QCoro::Task<QString> TracedTranscriptionService::stopTranscription()
{
    return stopped(m_service->stopTranscription(), m_service, m_trace);
}

QCoro::Task<QString> TracedTranscriptionService::stopped(QCoro::Task<QString> stopping,
                                                         std::shared_ptr<TranscriptionService> /*service*/,
                                                         std::shared_ptr<DictationTrace> trace)
{
    const QString transcript = co_await stopping;
    trace->note(Stage::FinalText);
    co_return transcript;
}

QCoro::Task<void> TracedTranscriptionService::cancelTranscription()
{
    return m_service->cancelTranscription();
}

TracedCleanupService::TracedCleanupService(std::shared_ptr<CleanupService> service,
                                           std::shared_ptr<DictationTrace> trace)
    : m_service(std::move(service)),
      m_trace(std::move(trace))
{
}

QCoro::Task<QString> TracedCleanupService::cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled,
                                                   TextTone textTone, QStringList dictionaryWords)
{
    return cleaned(m_service->cleanup(transcript, aiCleanupEnabled, conciseTextEnabled, textTone, dictionaryWords),
                   m_service, m_trace);
}

QCoro::Task<QString> TracedCleanupService::cleaned(QCoro::Task<QString> cleaning,
                                                   std::shared_ptr<CleanupService> /*service*/,
                                                   std::shared_ptr<DictationTrace> trace)
{
    const QString text = co_await cleaning;
    trace->note(Stage::Cleaned);
    co_return text;
}

} // namespace talmo
