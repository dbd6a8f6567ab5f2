#pragma once

#include "App/ForwardingTranscriptionService.h"
#include "Input/Audio/MicrophoneReport.h"

#include <memory>

namespace talmo {

/// Where a recording fails or gives no text because of the microphone, says so. A text that was recognised is passed on
/// whatever became of the microphone.
class DiagnosedTranscriptionService final : public ForwardingTranscriptionService {
public:
    DiagnosedTranscriptionService(std::shared_ptr<TranscriptionService> service,
                                  std::shared_ptr<MicrophoneReporter> microphone);

    QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService> recorder, QString locale,
                                         UpdateHandler onUpdate, ErrorHandler onError) override;
    QCoro::Task<QString> stopTranscription() override;

private:
    static QCoro::Task<void> start(QCoro::Task<void> starting, std::shared_ptr<TranscriptionService> service,
                                   std::shared_ptr<MicrophoneReporter> microphone);
    static QCoro::Task<QString> stop(std::shared_ptr<TranscriptionService> service,
                                     std::shared_ptr<MicrophoneReporter> microphone);

    std::shared_ptr<MicrophoneReporter> m_microphone;
};

} // namespace talmo
