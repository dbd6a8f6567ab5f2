#pragma once

namespace talmo {

/// Keeps what is said between the press of the key and the recording it leads to; the recording begins with it. None of
/// this touches a recording that runs. Main thread; returns at once, fails silently.
class SpeechPreroll {
public:
    virtual ~SpeechPreroll() = default;

    /// Opens the microphone and keeps what is said from now on, in place of what was kept before.
    virtual void begin() = 0;
    /// The key was released: keeps what there is, and listens no further.
    virtual void pause() = 0;
    /// Listens on after pause().
    virtual void resume() = 0;
    /// Throws away what was kept, unread. The microphone stays ready for a second tap.
    virtual void discard() = 0;
    /// Closes the microphone and throws away what was kept.
    virtual void close() = 0;
};

} // namespace talmo
