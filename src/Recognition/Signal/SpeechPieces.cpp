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

SpeechPieces::SpeechPieces(std::shared_ptr<VoiceActivity> activity, Handlers handlers)
    : m_activity(std::move(activity)),
      m_handlers(std::move(handlers))
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
            m_seen = 0;
            m_lastLook = windowEnd;
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
        m_seen = 0; // Of more than this piece.
        cut(end);
        m_pieceStart = end;
        m_speechStart = end;
        m_speech = m_speechEnd > end ? m_speechEnd - end : 0;
        m_isOpen = m_speech > 0;
    } else if (m_handlers.look && isTimeToLook(windowEnd)) {
        look(windowEnd);
    }
}

bool SpeechPieces::isTimeToLook(std::size_t windowEnd) const
{
    const std::size_t pause = windowEnd - m_speechEnd;
    if (m_seen == m_speechEnd || m_speech < leastSpeech || (pause > 0 && pause < lull)) {
        return false;
    }
    const auto seconds = [](std::size_t samples) { return static_cast<double>(samples) / sampleRate; };
    const double expected = m_lookLength > 0 ? m_lookTime * seconds(windowEnd - m_pieceStart) / m_lookLength : 0;
    // In a lull, checks may take a third of the time; during speech, a tenth.
    const double since = seconds(windowEnd - m_lastLook);
    return expected <= longestLook &&
           (pause >= lull ? since >= 2 * expected : since >= std::max(seconds(glance), 9 * expected));
}

void SpeechPieces::look(std::size_t windowEnd)
{
    m_lookLength = static_cast<double>(windowEnd - m_pieceStart) / sampleRate;
    m_lastLook = windowEnd;
    m_seen = windowEnd - m_speechEnd >= lull ? m_speechEnd : 0; // A word may have been cut off.
    m_lookTime = m_handlers.look(contentUpTo(windowEnd));
}

bool SpeechPieces::isAtCut(std::size_t windowEnd) const
{
    const std::size_t pause = windowEnd - m_speechEnd;
    return pause >= longPause || (pause >= surroundings && m_speechEnd - m_speechStart >= longEnough);
}

/// Speech without a pause: cuts where that does the least damage.
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
        m_handlers.take(contentUpTo(end), m_seen == m_speechEnd);
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

std::vector<float> SpeechPieces::contentUpTo(std::size_t end) const
{
    const auto content = between(m_pieceStart, end);
    std::vector<float> piece(content.begin(), content.end());
    if (piece.size() < shortest) {
        piece.resize(padded);
    }
    return piece;
}

std::span<const float> SpeechPieces::between(std::size_t begin, std::size_t end) const
{
    return std::span(m_kept).subspan(begin - m_keptFrom, end - begin);
}

} // namespace talmo
