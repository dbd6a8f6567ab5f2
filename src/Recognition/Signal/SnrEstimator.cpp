#include "Recognition/Signal/SnrEstimator.h"

#include <algorithm>
#include <cmath>

namespace talmo {

namespace {

constexpr std::size_t frameLength = 320; // In samples: 20 ms.
constexpr double fewestFrames = 50;
constexpr double mostFrames = 1500;
constexpr double asInAQuietRoom = 60;

} // namespace

void SnrEstimator::add(std::span<const std::int16_t> samples)
{
    for (const auto sample : samples) {
        m_frame.push_back(sample);
        if (m_frame.size() == frameLength) {
            takeFrame();
            m_frame.clear();
        }
    }
}

void SnrEstimator::takeFrame()
{
    double power = 1; // Below the resolution of a sample.
    for (const double sample : m_frame) {
        power += sample * sample / frameLength;
    }
    const auto decibels = static_cast<std::size_t>(10 * std::log10(power));
    m_frames.at(std::min(decibels, m_frames.size() - 1)) += 1;
    m_count += 1;
    if (m_count > mostFrames) {
        constexpr double less = 0.5;
        for (auto &frames : m_frames) {
            frames *= less;
        }
        m_count *= less;
    }
}

double SnrEstimator::voiceAboveNoise() const
{
    if (m_count < fewestFrames) {
        return asInAQuietRoom;
    }
    // A recording has both speech and pauses, so its quiet and loud ends are noise and voice.
    constexpr double quietShare = 0.1;
    constexpr double loudShare = 0.9;
    return levelOf(loudShare) - levelOf(quietShare);
}

bool SnrEstimator::isSteady() const
{
    constexpr double quietest = 0.05;
    constexpr double stillQuiet = 0.2;
    constexpr double spread = 3; // Decibels.
    return levelOf(stillQuiet) - levelOf(quietest) <= spread;
}

/// The level below which this share of the frames is.
double SnrEstimator::levelOf(double share) const
{
    double below = 0;
    std::size_t level = 0;
    while (level + 1 < m_frames.size() && below + m_frames.at(level) <= share * m_count) {
        below += m_frames.at(level);
        ++level;
    }
    return static_cast<double>(level);
}

} // namespace talmo
