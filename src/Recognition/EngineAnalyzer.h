#pragma once

#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Recognition/RecordingDecoder.h"

#include <memory>

namespace talmo {

/// Makes an engine recognise one recording, on the recogniser's thread, while it is spoken.
///
/// Waits for the engine as long as it makes progress, however far behind it is. If it stalls, the finalisation fails;
/// everything recognised until then is in the results.
class EngineAnalyzer final : public SpeechAnalyzer {
public:
    /// No model takes longer to load, and no engine longer over a buffer, unless something is wrong.
    static constexpr Duration longestStandstill = std::chrono::seconds(30);
    /// How exactly that is measured.
    static constexpr Duration watchInterval = std::chrono::seconds(1);

    using Results = AsyncStream<SpeechResult>::Continuation;

    /// `results`: finished here. `executor`: the decoder thread. `clock`: for the thread that finalises.
    EngineAnalyzer(Results results, MakeRecordingDecoder makeDecoder, std::shared_ptr<SerialExecutor> executor,
                   std::shared_ptr<Clock> clock);
    ~EngineAnalyzer() override;

    QFuture<void> start(AsyncStream<AnalyzerInput> input, std::stop_token stop) override;
    QFuture<void> finalizeAndFinishThroughEndOfInput() override;
    QFuture<void> cancelAndFinishNow() override;

private:
    class Recognition;
    std::shared_ptr<Recognition> m_recognition;
};

} // namespace talmo
