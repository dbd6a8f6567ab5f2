#include "Recognition/PocketSphinx/MicrophoneCalibration.h"

#include <utility>

namespace talmo {

bool MicrophoneCalibration::hold(std::span<const std::int16_t> samples)
{
    m_held.insert(m_held.end(), samples.begin(), samples.end());
    if (m_held.size() < m_nextAttempt) {
        return false;
    }
    m_nextAttempt += attemptStep;
    return true;
}

bool MicrophoneCalibration::isExhausted() const
{
    return m_held.size() >= longest;
}

std::vector<std::int16_t> MicrophoneCalibration::finish()
{
    m_isUnderWay = false;
    return std::exchange(m_held, {});
}

} // namespace talmo
