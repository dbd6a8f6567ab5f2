#include "Platform/Linux/StandInKeyFilter.h"

#include <utility>

namespace talmo {

void StandInKeyFilter::setKeyCodes(std::set<std::uint8_t> standIns)
{
    m_standIns = std::move(standIns);
    std::erase_if(m_held, [this](std::uint8_t keyCode) { return !isStandIn(keyCode); });
}

std::optional<bool> StandInKeyFilter::keyDown(std::uint8_t keyCode, Time now)
{
    if (!isStandIn(keyCode)) {
        if (m_isReportedDown && now - m_pressed < gestureBegins) {
            m_isReportedDown = false;
            m_usedAsModifier = now;
            return false;
        }
        if (!m_held.empty() && !m_isReportedDown) {
            m_usedAsModifier = now; // Still typing with it.
        }
        return std::nullopt;
    }
    const bool wasUp = m_held.empty();
    m_held.insert(keyCode);
    const bool isWithheld = m_usedAsModifier && now - *m_usedAsModifier <= withheldAfterUse;
    if (!wasUp || m_isReportedDown || isWithheld) {
        return std::nullopt;
    }
    m_isReportedDown = true;
    m_pressed = now;
    return true;
}

std::optional<bool> StandInKeyFilter::keyUp(std::uint8_t keyCode, Time)
{
    if (m_held.erase(keyCode) == 0 || !m_held.empty() || !m_isReportedDown) {
        return std::nullopt;
    }
    m_isReportedDown = false;
    return false;
}

} // namespace talmo
