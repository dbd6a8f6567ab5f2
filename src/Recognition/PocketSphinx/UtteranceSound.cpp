#include "Recognition/PocketSphinx/UtteranceSound.h"

#include <cstdint>
#include <limits>

namespace talmo {

std::span<const std::int16_t> UtteranceSound::add(std::span<const std::int16_t> samples, const Reduce &reduce,
                                                  bool isReduced)
{
    m_music.add(samples);
    m_presence.add(samples);
    if (!isReduced) {
        reduce(samples, m_withoutNoise);
        add(samples);
        return samples;
    }
    const auto before = m_recognised.size();
    reduce(samples, m_recognised);
    return std::span(m_recognised).subspan(before);
}

void UtteranceSound::add(std::span<const std::int16_t> samples)
{
    m_recognised.insert(m_recognised.end(), samples.begin(), samples.end());
}

void UtteranceSound::clear()
{
    m_music.reset();
    m_presence.clear();
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

bool UtteranceSound::isWithoutSpeech() const
{
    constexpr double onlyMusic = 0.75;
    return m_music.share() > onlyMusic || !m_presence.isSpeech();
}

} // namespace talmo
