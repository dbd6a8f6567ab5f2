#include "Recognition/Signal/NoiseReduction.h"

#include <algorithm>

namespace talmo {

void NoiseReduction::reduce(std::span<const std::int16_t> samples, std::vector<std::int16_t> &reduced)
{
    constexpr auto length = NoiseSuppressor::frameLength;
    std::size_t at = reduced.size();
    reduced.resize(at + (m_rest.size() + samples.size()) / length * length);
    if (!m_rest.empty()) {
        const auto missing = samples.first(std::min(length - m_rest.size(), samples.size()));
        m_rest.insert(m_rest.end(), missing.begin(), missing.end());
        samples = samples.subspan(missing.size());
        if (m_rest.size() == length) {
            m_suppressor.process(m_rest.data(), reduced.data() + at);
            at += length;
            m_rest.clear();
        }
    }
    for (; samples.size() >= length; samples = samples.subspan(length), at += length) {
        m_suppressor.process(samples.data(), reduced.data() + at);
    }
    m_rest.insert(m_rest.end(), samples.begin(), samples.end());
}

std::vector<std::int16_t> NoiseReduction::flush()
{
    std::vector<std::int16_t> reduced;
    if (!m_rest.empty()) {
        reduce(std::vector<std::int16_t>(NoiseSuppressor::frameLength - m_rest.size()), reduced);
    }
    return reduced;
}

void NoiseReduction::measure(std::span<const std::int16_t> samples)
{
    m_level.add(samples);
    // Decibels. In rooms full of echoes and other voices, the filter takes more of the voice than it gives.
    constexpr double muchNoise = 20;
    constexpr double muchSteadyNoise = 30;
    // The state is kept while the level is between the limit and this much above it, so that it does not change with
    // every sentence.
    constexpr double hysteresis = 4;
    const double limit = m_level.isSteady() ? muchSteadyNoise : muchNoise;
    m_isWorthwhile = m_level.voiceAboveNoise() < limit + (m_isWorthwhile ? hysteresis : 0);
}

} // namespace talmo
