#pragma once

#include "Recognition/Signal/NoiseSuppressor.h"
#include "Recognition/Signal/SnrEstimator.h"

#include <cstdint>
#include <span>
#include <vector>

namespace talmo {

/// Removes steady noise, such as a fan's, from microphone audio. Its noise estimate carries over from one recording to
/// the next. Not thread-safe.
class NoiseReduction {
public:
    /// Throws Error if the library reports one.
    NoiseReduction() = default;

    /// One channel at 16 kHz. Appends whole 10 ms frames to `reduced`; the remainder follows with the next call.
    void reduce(std::span<const std::int16_t> samples, std::vector<std::int16_t> &reduced);
    /// The remainder, padded with silence to a whole frame.
    std::vector<std::int16_t> flush();

    /// Updates isWorthwhile() from microphone audio.
    void measure(std::span<const std::int16_t> samples);
    /// Whether there is enough noise for its removal to improve recognition. With little noise it makes recognition
    /// worse, since part of the voice is always removed as well.
    bool isWorthwhile() const { return m_isWorthwhile; }

private:
    NoiseSuppressor m_suppressor;
    std::vector<std::int16_t> m_rest;
    SnrEstimator m_level;
    bool m_isWorthwhile = false;
};

} // namespace talmo
