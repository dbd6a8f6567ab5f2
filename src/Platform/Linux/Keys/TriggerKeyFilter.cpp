#include "Platform/Linux/Keys/TriggerKeyFilter.h"

#include <utility>

namespace talmo {

void TriggerKeyFilter::setKeyCodes(std::set<std::uint8_t> triggerKeys)
{
    m_triggerKeys = std::move(triggerKeys);
}

std::optional<bool> TriggerKeyFilter::keyDown(std::uint8_t keyCode, Time now)
{
    if (m_held.contains(keyCode)) {
        return std::nullopt;
    }
    if (!isTriggerKey(keyCode)) {
        if (m_isReportedDown && now - m_pressed < gestureBegins) {
            m_isReportedDown = false;
            m_usedAsModifier = now;
            return false;
        }
        if (!m_held.empty() && !m_isReportedDown) {
            m_usedAsModifier = now; // The modifier is still in use.
            m_isHeldBack = false;
        }
        return std::nullopt;
    }
    const bool wasUp = m_held.empty();
    m_held.insert(keyCode);
    if (!wasUp || m_isReportedDown) {
        return std::nullopt;
    }
    m_isHeldBack = m_usedAsModifier && now - *m_usedAsModifier <= withheldAfterUse;
    return m_isHeldBack ? std::nullopt : reportDown(now);
}

std::optional<bool> TriggerKeyFilter::keyUp(std::uint8_t keyCode)
{
    if (m_held.erase(keyCode) == 0 || !m_held.empty()) {
        return std::nullopt;
    }
    m_isHeldBack = false;
    return std::exchange(m_isReportedDown, false) ? std::optional(false) : std::nullopt;
}

std::optional<TriggerKeyFilter::Time> TriggerKeyFilter::withheldUntil() const
{
    if (!m_isHeldBack || !m_usedAsModifier) {
        return std::nullopt;
    }
    // One millisecond later: at the exact end, the window of a double-tap is still open.
    return *m_usedAsModifier + withheldAfterUse + std::chrono::milliseconds(1);
}

std::optional<bool> TriggerKeyFilter::timePassed(Time now)
{
    const auto due = withheldUntil();
    return due && now >= *due ? reportDown(now) : std::nullopt;
}

std::optional<bool> TriggerKeyFilter::reportDown(Time now)
{
    m_isHeldBack = false;
    m_isReportedDown = true;
    m_pressed = now;
    return true;
}

} // namespace talmo
