#include "Recognition/Signal/SpeechPieces.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace talmo {

namespace {

constexpr std::size_t window = VoiceActivity::window;

/// Where in a piece without a pause it may be cut.
constexpr std::size_t cutRange = SpeechPieces::sampleRate * 5;

float energyOf(std::span<const float> samples)
{
    return std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0F);
}

} // namespace

SpeechPieces::SpeechPieces(std::shared_ptr<VoiceActivity> activity, Take take)
    : m_activity(std::move(activity)),
      m_take(std::move(take))
{
}

void SpeechPieces::accept(std::span<const float> samples)
{
    m_kept.insert(m_kept.end(), samples.begin(), samples.end());
    while (m_judged + window <= heardEnd()) {
        m_judged += window;
        judge(m_judged);
    }
}

void SpeechPieces::judge(std::size_t windowEnd)
{
    if (m_activity->isSpeech(between(windowEnd - window, windowEnd))) {
        if (!m_isOpen) {
            m_isOpen = true;
            m_speech = 0;
            m_speechStart = windowEnd - window;
            m_pieceStart = std::max(m_keptFrom, m_speechStart - std::min(m_speechStart, surroundings));
        }
        m_speech += window;
        m_speechEnd = windowEnd;
    }
    if (!m_isOpen) {
        forgetUpTo(windowEnd - std::min(windowEnd, surroundings));
    } else if (isAtCut(windowEnd)) {
        cut(std::min(m_speechEnd + surroundings, windowEnd));
        m_isOpen = false;
    } else if (windowEnd + window > m_pieceStart + longest) {
        const std::size_t end = quietestCut();
        cut(end);
        m_pieceStart = end;
        m_speechStart = end;
        m_speech = m_speechEnd > end ? m_speechEnd - end : 0;
        m_isOpen = m_speech > 0;
    }
}

bool SpeechPieces::isAtCut(std::size_t windowEnd) const
{
    const std::size_t pause = windowEnd - m_speechEnd;
    return pause >= longPause || (pause >= surroundings && m_speechEnd - m_speechStart >= longEnough);
}

/// Somebody speaks on and on: the cut is where that hurts least.
std::size_t SpeechPieces::quietestCut() const
{
    std::size_t quietest = m_judged;
    float least = std::numeric_limits<float>::max();
    for (std::size_t end = m_judged; end > m_judged - cutRange; end -= window) {
        if (const float energy = energyOf(between(end - window, end)); energy < least) {
            least = energy;
            quietest = end - window / 2;
        }
    }
    return quietest;
}

void SpeechPieces::cut(std::size_t end)
{
    if (m_speech >= leastSpeech) {
        const auto content = between(m_pieceStart, end);
        std::vector<float> piece(content.begin(), content.end());
        if (piece.size() < shortest) {
            piece.resize(padded);
        }
        m_take(std::move(piece));
    }
    // The silence after one piece may also be that before the next one.
    forgetUpTo(std::max(m_keptFrom, std::min(m_speechEnd, end)));
}

void SpeechPieces::finish()
{
    if (std::exchange(m_isOpen, false)) {
        cut(std::min(m_speechEnd + surroundings, heardEnd()));
    }
}

void SpeechPieces::forgetUpTo(std::size_t position)
{
    if (position > m_keptFrom) {
        m_kept.erase(m_kept.begin(), m_kept.begin() + static_cast<std::ptrdiff_t>(position - m_keptFrom));
        m_keptFrom = position;
    }
}

std::span<const float> SpeechPieces::between(std::size_t begin, std::size_t end) const
{
    return std::span(m_kept).subspan(begin - m_keptFrom, end - begin);
}

} // namespace talmo
