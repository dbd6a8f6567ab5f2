#pragma once

#include "Recognition/Signal/VoiceActivity.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace talmo {

/// Whether somebody has spoken. Without anything that could tell, somebody always has. One thread.
class SpeechPresence {
public:
    /// `activity`: reset; null if there is none.
    explicit SpeechPresence(std::shared_ptr<VoiceActivity> activity)
        : m_activity(std::move(activity))
    {
    }

    /// One channel at 16 kHz.
    void add(std::span<const std::int16_t> samples);
    /// Since the last clear().
    bool isSpeech() const;
    void clear() { m_speech = 0; }

private:
    std::shared_ptr<VoiceActivity> m_activity;
    std::vector<float> m_window;
    /// In samples.
    std::size_t m_speech = 0;
};

} // namespace talmo
