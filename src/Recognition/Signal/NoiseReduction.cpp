#include "Recognition/Signal/NoiseReduction.h"

namespace talmo {

std::vector<std::int16_t> NoiseReduction::reduce(std::span<const std::int16_t> samples)
{
    m_rest.insert(m_rest.end(), samples.begin(), samples.end());
    constexpr auto length = NoiseSuppressor::frameLength;
    const std::size_t whole = m_rest.size() / length * length;
    std::vector<std::int16_t> reduced(whole);
    for (std::size_t at = 0; at < whole; at += length) {
        m_suppressor.process(m_rest.data() + at, reduced.data() + at);
    }
    m_rest.erase(m_rest.begin(), m_rest.begin() + static_cast<std::ptrdiff_t>(whole));
    return reduced;
}

std::vector<std::int16_t> NoiseReduction::flush()
{
    if (m_rest.empty()) {
        return {};
    }
    return reduce(std::vector<std::int16_t>(NoiseSuppressor::frameLength - m_rest.size()));
}

void NoiseReduction::measure(std::span<const std::int16_t> samples)
{
    m_level.add(samples);
    // Decibels. In rooms full of echoes and other voices, the filter takes more of the voice than it gives.
    constexpr double muchNoise = 20;
    constexpr double muchSteadyNoise = 30;
    // The state is kept while the level is between the limit and this much above, so that it does not change with every
    // sentence.
    constexpr double hysteresis = 4;
    const double limit = m_level.isSteady() ? muchSteadyNoise : muchNoise;
    m_isWorthwhile = m_level.voiceAboveNoise() < limit + (m_isWorthwhile ? hysteresis : 0);
}

} // namespace talmo
