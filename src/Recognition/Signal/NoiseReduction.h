#pragma once

#include "Recognition/Signal/NoiseLevel.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace talmo {

/// Takes steady noise, such as a fan's, out of what a microphone hears. What it has learnt about the noise it keeps
/// from one recording to the next. Not thread-safe.
class NoiseReduction {
public:
    /// Throws Error when the library refuses.
    NoiseReduction();
    ~NoiseReduction();
    NoiseReduction(const NoiseReduction &) = delete;
    NoiseReduction &operator=(const NoiseReduction &) = delete;

    /// One channel, 16,000 samples a second. Returns it in whole hundredths of a second; the rest comes with the next.
    std::vector<std::int16_t> reduce(std::span<const std::int16_t> samples);
    /// The rest, filled up with silence.
    std::vector<std::int16_t> flush();

    /// Takes what was heard into account for `isWorthwhile`.
    void measure(std::span<const std::int16_t> samples);
    /// Whether there is so much noise that words are told better without it. Where there is little, they are told
    /// worse: something of the voice always goes with the noise.
    bool isWorthwhile() const { return m_isWorthwhile; }

private:
    struct Filter;
    std::unique_ptr<Filter> m_filter;
    std::vector<std::int16_t> m_rest;
    NoiseLevel m_level;
    bool m_isWorthwhile = false;
};

} // namespace talmo
