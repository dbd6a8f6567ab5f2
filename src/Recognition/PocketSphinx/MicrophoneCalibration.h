#pragma once

#include "Recognition/RecordingDecoder.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace talmo {

/// Holds back the beginning of a recording until an unknown microphone can be calibrated from it. Without calibration
/// the decoder needs many seconds to adjust, and gets the words until then wrong. Samples are 16 kHz, one channel.
class MicrophoneCalibration {
public:
    /// `isNeeded`: false for a known microphone.
    explicit MicrophoneCalibration(bool isNeeded)
        : m_isUnderWay(isNeeded)
    {
    }

    bool isUnderWay() const { return m_isUnderWay; }
    /// True if there is enough sound for another attempt.
    bool hold(std::span<const std::int16_t> samples);
    /// Whether the next attempt is the last one: a user who stays silent is not waited for.
    bool isExhausted() const;
    std::span<const std::int16_t> held() const { return m_held; }
    /// Ends the calibration and returns what was held back.
    std::vector<std::int16_t> finish();

private:
    bool m_isUnderWay;
    std::vector<std::int16_t> m_held;
    std::size_t m_nextAttempt = firstAttempt;

    // In samples.
    static constexpr std::size_t second = RecordingDecoder::sampleRate;
    static constexpr std::size_t firstAttempt = second * 3 / 2;
    static constexpr std::size_t attemptStep = second / 2;
    static constexpr std::size_t longest = second * 6;
};

} // namespace talmo
