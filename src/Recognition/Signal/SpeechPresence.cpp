#include "Recognition/Signal/SpeechPresence.h"

#include "Base/DetailedError.h"
#include "Base/Log.h"

namespace talmo {

void SpeechPresence::add(std::span<const std::int16_t> samples)
{
    if (!m_activity) {
        return;
    }
    constexpr float fullScale = 32768;
    try {
        for (const auto sample : samples) {
            m_window.push_back(static_cast<float>(sample) / fullScale);
            if (m_window.size() == VoiceActivity::window) {
                m_speech += m_activity->isSpeech(m_window) ? m_window.size() : 0;
                m_window.clear();
            }
        }
    } catch (const Error &error) { // The recording goes on as if there were no voice activity detection.
        generalLog().error("voice activity detection: %@", {wholeDescription(error)});
        m_activity.reset();
    }
}

bool SpeechPresence::isSpeech() const
{
    // In samples. The shortest word takes more; the clicks and beats that are taken for speech take less.
    constexpr std::size_t shortestSpeech = 1600;
    return !m_activity || m_speech >= shortestSpeech;
}

} // namespace talmo
