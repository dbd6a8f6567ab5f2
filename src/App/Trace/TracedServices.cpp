#include "App/Trace/TracedServices.h"

#include <type_traits>
#include <utility>

namespace talmo {

using Stage = DictationTrace::Stage;

namespace {

/// Notes the stage once the work of the service is done.
template <typename Result>
QCoro::Task<Result> noting(QCoro::Task<Result> work, std::shared_ptr<const void> /*service*/,
                           std::shared_ptr<DictationTrace> trace, Stage stage)
{
    if constexpr (std::is_void_v<Result>) {
        co_await work;
        trace->note(stage);
    } else {
        Result result = co_await work;
        trace->note(stage);
        co_return result;
    }
}

} // namespace

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
    : ForwardingTranscriptionService(std::move(service)),
      m_trace(std::move(trace))
{
}

QCoro::Task<void> TracedTranscriptionService::startTranscription(std::shared_ptr<RecorderService> recorder,
                                                                 QString locale, UpdateHandler onUpdate,
                                                                 ErrorHandler onError)
{
    return noting(service()->startTranscription(std::move(recorder), locale, std::move(onUpdate), std::move(onError)),
                  service(), m_trace, Stage::Recording);
}

QCoro::Task<QString> TracedTranscriptionService::stopTranscription()
{
    return noting(service()->stopTranscription(), service(), m_trace, Stage::FinalText);
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
    return noting(m_service->cleanup(transcript, aiCleanupEnabled, conciseTextEnabled, textTone, dictionaryWords),
                  m_service, m_trace, Stage::Cleaned);
}

} // namespace talmo
