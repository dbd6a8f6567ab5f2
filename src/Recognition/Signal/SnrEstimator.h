#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace talmo {

/// Estimates the signal-to-noise ratio: how much louder the voice is than the sound between words.
class SnrEstimator {
public:
    /// One channel at 16 kHz.
    void add(std::span<const std::int16_t> samples);
    /// Decibels between the loud and the quiet moments of about the last 30 seconds: roughly 20 if words are barely
    /// intelligible, 50 in a quiet room. A quiet room is assumed until there is enough audio to tell.
    double voiceAboveNoise() const;
    /// Whether the quiet moments are all about equally loud, as with a fan.
    bool isSteady() const;

private:
    void takeFrame();
    double levelOf(double share) const;

    std::vector<std::int16_t> m_frame;
    /// Histogram of frame levels in decibels; old frames count for less.
    std::array<double, 96> m_frames{};
    double m_count = 0;
};

} // namespace talmo
