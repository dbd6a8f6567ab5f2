#pragma once

#include <cstddef>
#include <span>

namespace talmo {

/// Tells speech from silence, noise and music. One thread.
class VoiceActivity {
public:
    /// Samples at 16 kHz that are judged at once.
    static constexpr std::size_t window = 512;

    virtual ~VoiceActivity() = default;

    /// Whether the next window of a recording is speech. `samples`: as many as a window has, between -1 and 1. Throws
    /// Error.
    virtual bool isSpeech(std::span<const float> samples) = 0;
    /// Begins another recording. Throws Error.
    virtual void reset() = 0;
};

} // namespace talmo
