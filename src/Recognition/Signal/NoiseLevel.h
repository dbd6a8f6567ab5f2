#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace talmo {

/// How much louder a voice is than what is heard between its words.
class NoiseLevel {
public:
    /// One channel, 16,000 samples a second.
    void add(std::span<const std::int16_t> samples);
    /// Decibels between the loud and the quiet moments of the last half minute or so: about 20 where the words can
    /// hardly be made out, 50 in a quiet room. As in a quiet room while there is too little to tell.
    double voiceAboveNoise() const;

private:
    void takeFrame();

    std::vector<std::int16_t> m_frame;
    /// How many frames were how loud, in decibels; those from long ago count for less.
    std::array<double, 96> m_frames{};
    double m_count = 0;
};

} // namespace talmo
