#pragma once

#include "Base/SerialExecutor.h"
#include "Input/Audio/SpeechPreroll.h"
#include "Platform/Linux/Sound/PulseAudioEngine.h"

#include <memory>

namespace talmo {

/// Controls the engine's keeping of audio before a recording, on the thread that starts recordings, so that these calls
/// and the starts run in the order in which they were made.
class PulsePreroll final : public SpeechPreroll {
public:
    PulsePreroll(std::shared_ptr<PulseAudioEngine> engine, std::shared_ptr<SerialExecutor> executor);

    void begin() override { post(&PulseAudioEngine::warmUp); }
    void pause() override { post(&PulseAudioEngine::pauseKeeping); }
    void resume() override { post(&PulseAudioEngine::resumeKeeping); }
    void discard() override { post(&PulseAudioEngine::discardKept); }
    void close() override { post(&PulseAudioEngine::coolDown); }

private:
    void post(void (PulseAudioEngine::*call)());

    std::shared_ptr<PulseAudioEngine> m_engine;
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
