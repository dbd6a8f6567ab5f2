#pragma once

#include "App/Services/PipelineServices.h"
#include "Input/Audio/AudioBuffer.h"

namespace talmo {

/// The default microphone. Called from the main thread or the transcription's, one call at a time: inputFormat(), then
/// removeTap(), installTap(), prepare(), start(); later removeTap(), stop(). It can be started again after any of them
/// failed. The tap's handler runs on the engine's own capture thread, one buffer at a time.
class AudioEngine {
public:
    virtual ~AudioEngine() = default;

    /// The format of the microphone; 0 Hz or 0 channels where there is none. May ask the system, half a second at most.
    virtual AudioFormat inputFormat() = 0;

    /// Hands every captured buffer of about `bufferSize` frames to `handler`, in the microphone's format. Throws Error
    /// or PlatformException when it cannot.
    virtual void installTap(quint32 bufferSize, AudioBufferHandler handler) = 0;

    /// Delivers what was captured until now, then ends the tap: the handler never runs again once this has returned.
    /// Waits 30 ms at most, and not at all when the device is gone. Harmless without a tap.
    virtual void removeTap() = 0;

    virtual void prepare() = 0;

    /// Begins capture; throws Error.
    virtual void start() = 0;

    virtual void stop() = 0;
};

} // namespace talmo
