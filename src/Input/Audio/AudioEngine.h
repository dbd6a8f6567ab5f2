#pragma once

#include "App/Services/PipelineServices.h"
#include "Input/Audio/AudioBuffer.h"

namespace talmo {

/// The default microphone. Called from the main or the transcription thread, one call at a time: inputFormat(), then
/// removeTap(), installTap(), prepare(), start(); later removeTap(), stop(). It can be started again after any of them
/// has failed. The tap's handler runs on the engine's own capture thread, one buffer at a time.
class AudioEngine {
public:
    virtual ~AudioEngine() = default;

    /// The microphone's format; 0 Hz or 0 channels if there is none. May query the system, for half a second at most.
    virtual AudioFormat inputFormat() = 0;

    /// Passes every captured buffer of about `bufferSize` frames to `handler`, in the microphone's format. Throws Error
    /// or PlatformException on failure.
    virtual void installTap(quint32 bufferSize, AudioBufferHandler handler) = 0;

    /// Delivers everything captured so far, then removes the tap: the handler never runs after this has returned.
    /// Blocks for 30 ms at most, and not at all if the device is gone. Harmless without a tap.
    virtual void removeTap() = 0;

    virtual void prepare() = 0;

    /// Starts capture; throws Error.
    virtual void start() = 0;

    virtual void stop() = 0;
};

} // namespace talmo
