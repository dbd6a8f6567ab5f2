#pragma once

#include "Base/SerialExecutor.h"
#include "Platform/Linux/MicrophoneMemory.h"
#include "Platform/Linux/PocketSphinxDecoder.h"
#include "Speech/SpeechPlatform.h"

#include <functional>
#include <memory>

namespace talmo {

class PocketSphinxTranscriber final : public SpeechTranscriber {
public:
    PocketSphinxTranscriber();

    AsyncStream<SpeechResult> results() const override { return m_results; }
    const AsyncStream<SpeechResult>::Continuation &continuation() const { return m_continuation; }

private:
    explicit PocketSphinxTranscriber(
        std::pair<AsyncStream<SpeechResult>, AsyncStream<SpeechResult>::Continuation> stream);

    AsyncStream<SpeechResult> m_results;
    AsyncStream<SpeechResult>::Continuation m_continuation;
};

/// What an analyzer needs to know of the microphone.
struct MicrophoneKnowledge {
    /// The name of the one that is recorded with; asked on the recogniser's thread. Empty when unknown.
    std::function<QString()> currentName;
    std::shared_ptr<MicrophoneMemory> memory;
};

/// Decodes one recording on the recogniser's thread while it is spoken.
class PocketSphinxAnalyzer final : public SpeechAnalyzer {
public:
    PocketSphinxAnalyzer(std::shared_ptr<PocketSphinxTranscriber> transcriber,
                         std::shared_ptr<PocketSphinxDecoderPool> pool, MicrophoneKnowledge microphone,
                         std::shared_ptr<SerialExecutor> executor);
    ~PocketSphinxAnalyzer() override;

    QFuture<void> start(AsyncStream<AnalyzerInput> input, std::stop_token stop) override;
    QFuture<void> finalizeAndFinishThroughEndOfInput() override;
    QFuture<void> cancelAndFinishNow() override;

private:
    class Recognition;
    std::shared_ptr<Recognition> m_recognition;
};

} // namespace talmo
