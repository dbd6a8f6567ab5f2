#include "App/DiagnosedTranscriptionService.h"

#include "Input/Audio/AudioRecorder.h"

#include <utility>

namespace talmo {

namespace {

bool isForLackOfInput(const std::exception_ptr &failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const RecorderError &error) {
        return error.which() == RecorderError::Case::NoInputAvailable;
    } catch (...) {
        return false;
    }
}

} // namespace

DiagnosedTranscriptionService::DiagnosedTranscriptionService(std::shared_ptr<TranscriptionService> service,
                                                             std::shared_ptr<MicrophoneReporter> microphone)
    : ForwardingTranscriptionService(std::move(service)),
      m_microphone(std::move(microphone))
{
}

QCoro::Task<void> DiagnosedTranscriptionService::startTranscription(std::shared_ptr<RecorderService> recorder,
                                                                    QString locale, UpdateHandler onUpdate,
                                                                    ErrorHandler onError)
{
    return start(service()->startTranscription(std::move(recorder), locale, std::move(onUpdate), std::move(onError)),
                 service(), m_microphone);
}

QCoro::Task<void> DiagnosedTranscriptionService::start(QCoro::Task<void> starting,
                                                       std::shared_ptr<TranscriptionService> /*service*/,
                                                       std::shared_ptr<MicrophoneReporter> microphone)
{
    std::exception_ptr failure;
    try {
        co_await starting;
    } catch (...) {
        failure = std::current_exception();
    }
    if (!failure) {
        co_return;
    }
    if (isForLackOfInput(failure)) {
        const MicrophoneReport report = microphone->report();
        if (report.finding == MicrophoneReport::Finding::NoServer) {
            throw Error(report.message());
        }
    }
    std::rethrow_exception(failure);
}

QCoro::Task<QString> DiagnosedTranscriptionService::stopTranscription()
{
    return stop(service(), m_microphone);
}

QCoro::Task<QString> DiagnosedTranscriptionService::stop(std::shared_ptr<TranscriptionService> service,
                                                         std::shared_ptr<MicrophoneReporter> microphone)
{
    const QString text = co_await service->stopTranscription();
    if (text.isEmpty()) {
        const MicrophoneReport report = microphone->report();
        if (report.finding != MicrophoneReport::Finding::Fine) {
            throw Error(report.message());
        }
    }
    co_return text;
}

} // namespace talmo
