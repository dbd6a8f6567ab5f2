#pragma once

#include "App/ForwardingTranscriptionService.h"
#include "Input/Audio/MicrophoneReport.h"

#include <memory>

namespace talmo {

/// Explains a recording that fails or yields no text because of the microphone. A recognised text is passed on whatever
/// the state of the microphone.
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
