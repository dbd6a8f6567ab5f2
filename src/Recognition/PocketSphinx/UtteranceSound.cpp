#include "Recognition/PocketSphinx/UtteranceSound.h"

namespace talmo {

namespace {

void append(std::vector<std::int16_t> &sound, std::span<const std::int16_t> samples)
{
    sound.insert(sound.end(), samples.begin(), samples.end());
}

} // namespace

void UtteranceSound::add(std::span<const std::int16_t> samples, std::span<const std::int16_t> withoutNoise,
                         bool isReduced)
{
    m_steadySound.add(samples);
    append(m_recognised, isReduced ? withoutNoise : samples);
    if (!isReduced) {
        append(m_withoutNoise, withoutNoise);
    }
}

void UtteranceSound::clear()
{
    m_steadySound.reset();
    m_recognised.clear();
    m_withoutNoise.clear();
}

bool UtteranceSound::isMusic() const
{
    constexpr double onlyMusic = 0.75;
    return m_steadySound.share() > onlyMusic;
}

} // namespace talmo
