#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/AsyncStream.h"
#include "Base/SerialExecutor.h"
#include "Base/Task.h"
#include "Input/Audio/AudioConverter.h"
#include "Speech/SpeechPlatform.h"
#include "Speech/TranscriptAccumulator.h"

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// Transcribes the microphone audio of one recording. An actor: its state is accessed on its own executor only; its
/// operations are awaited on the main thread, where its callbacks also run.
class SpeechTranscriptionService final : public TranscriptionService {
public:
    /// `executor` is the actor's thread, `mainExecutor` the thread of callers and callbacks.
    SpeechTranscriptionService(std::shared_ptr<SpeechPlatform> platform,
                               std::shared_ptr<const AudioConverterFactory> converters,
                               std::shared_ptr<SerialExecutor> executor, std::shared_ptr<SerialExecutor> mainExecutor);
    ~SpeechTranscriptionService() override;

    QCoro::Task<ModelStatus> modelStatus(QString locale) override;
    QCoro::Task<void> installModel(QString locale) override;
    QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService> recorder, QString locale,
                                         UpdateHandler onUpdate, ErrorHandler onError) override;
    QCoro::Task<QString> stopTranscription() override;
    QCoro::Task<void> cancelTranscription() override;

private:
    class Actor;
    std::shared_ptr<Actor> m_actor;
};

} // namespace talmo
