#include "Recognition/PocketSphinx/UtteranceSound.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace talmo {

namespace {

std::int64_t energyOf(std::span<const std::int16_t> samples)
{
    std::int64_t energy = 0;
    for (const auto sample : samples) {
        energy += std::int64_t{sample} * sample;
    }
    return energy;
}

} // namespace

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

bool UtteranceSound::endsQuietly(std::size_t count, std::size_t frame) const
{
    constexpr std::int64_t twiceAsLoud = 4; // In energy.
    // The root mean square of a microphone's own noise, for rooms in which there is nothing else.
    constexpr int quietestAudible = 10;
    const auto quietestPassage = quietest(count);
    if (quietestPassage.empty()) {
        return false;
    }
    const auto frames = static_cast<std::int64_t>(count / frame);
    const auto inaudible = std::int64_t{quietestAudible} * quietestAudible * static_cast<std::int64_t>(frame);
    const auto loudest = std::max(inaudible, twiceAsLoud * energyOf(quietestPassage) / frames);
    auto rest = std::span(m_recognised).last(count);
    while (rest.size() >= frame) {
        if (energyOf(rest.first(frame)) > loudest) {
            return false;
        }
        rest = rest.subspan(frame);
    }
    return true;
}

bool UtteranceSound::isWithoutSpeech() const
{
    constexpr double onlyMusic = 0.75;
    return m_music.share() > onlyMusic || !m_presence.isSpeech();
}

} // namespace talmo
