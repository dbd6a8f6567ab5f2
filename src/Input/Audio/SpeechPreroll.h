#pragma once

namespace talmo {

/// Keeps the audio between the press of the key and the recording that it leads to; the recording begins with it. Never
/// affects a running recording. Main thread; returns at once, fails silently.
class SpeechPreroll {
public:
    virtual ~SpeechPreroll() = default;

    /// Opens the microphone and keeps its audio from this moment, replacing what was kept before.
    virtual void begin() = 0;
    /// The key was released: keeps the audio so far, and stops listening.
    virtual void pause() = 0;
    /// Continues listening after pause().
    virtual void resume() = 0;
    /// Discards the kept audio. The microphone stays open for a second tap.
    virtual void discard() = 0;
    /// Closes the microphone and discards the kept audio.
    virtual void close() = 0;
};

} // namespace talmo
