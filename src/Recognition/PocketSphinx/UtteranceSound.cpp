#include "Recognition/PocketSphinx/UtteranceSound.h"

#include <cstdint>
#include <limits>

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

std::span<const std::int16_t> UtteranceSound::quietest(std::size_t count) const
{
    if (count > m_recognised.size()) {
        return {};
    }
    const auto square = [](std::int16_t sample) { return std::int64_t{sample} * sample; };
    std::int64_t energy = 0;
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    std::size_t quietestEnd = count;
    for (std::size_t end = 1; end <= m_recognised.size(); ++end) {
        energy += square(m_recognised[end - 1]);
        if (end > count) {
            energy -= square(m_recognised[end - 1 - count]);
        }
        if (end >= count && energy < least) {
            least = energy;
            quietestEnd = end;
        }
    }
    return std::span(m_recognised).subspan(quietestEnd - count, count);
}

bool UtteranceSound::isMusic() const
{
    constexpr double onlyMusic = 0.75;
    return m_steadySound.share() > onlyMusic;
}

} // namespace talmo
