#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Error.h"
#include "Input/Audio/AudioEngine.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace talmo {

/// Why capture could not start; each case has its own message for the user.
class RecorderError : public Error {
public:
    enum class Case { TapInstallationFailed, EngineStartFailed, NoInputAvailable };

    /// `underlying` describes the cause; not used for NoInputAvailable.
    explicit RecorderError(Case which, const QString &underlying = {});

    Case which() const { return m_case; }

private:
    Case m_case;
};

/// Captures the default microphone and passes every buffer on unchanged. Main or transcription thread.
class AudioRecorder final : public RecorderService {
public:
    /// Frames per captured buffer.
    static constexpr quint32 bufferSize = 2048;

    explicit AudioRecorder(std::shared_ptr<AudioEngine> engine);

    void start(AudioBufferHandler onBuffer) override;
    void stop() override;

    bool isRecording() const { return m_isRecording; }

private:
    void installTap(const AudioBufferHandler &onBuffer);

    std::shared_ptr<AudioEngine> m_engine;
    /// Serialises engine calls: a stop on the main thread may overlap with a start on the transcription thread.
    std::mutex m_mutex;
    std::atomic<bool> m_isRecording = false;
};

} // namespace talmo
