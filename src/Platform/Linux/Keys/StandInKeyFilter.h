#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

namespace talmo {

/// Decides what of the stand-in key's life is the dictation key's: a keyboard's own fn key seldom reaches the system,
/// so another key stands in for it, and one that is a modifier must still work as one. A plain value; the caller
/// passes the time.
class StandInKeyFilter {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// A modifier used with another key is not a dictation, and a press this soon after it is likely part of the same
    /// typing, and would count as the second of a double-tap. It is held back, and reported once the time is over if
    /// the key is still down: so nobody speaks in vain who dictates right after a Ctrl+C.
    static constexpr auto withheldAfterUse = std::chrono::milliseconds(300);
    /// Held for this long, the key has begun a dictation, and other keys no longer take it back.
    static constexpr auto gestureBegins = std::chrono::milliseconds(150);

    /// All of them together count as one key. Held keys stay held, whatever they have become: their release is
    /// reported.
    void setKeyCodes(std::set<std::uint8_t> standIns);
    bool isStandIn(std::uint8_t keyCode) const { return m_standIns.contains(keyCode); }
    /// Its presses and releases count: it stands in, or it did when it was pressed.
    bool isWatched(std::uint8_t keyCode) const { return isStandIn(keyCode) || m_held.contains(keyCode); }

    /// The change to report for this press or release: the key went down, up, or nothing changed.
    std::optional<bool> keyDown(std::uint8_t keyCode, Time now);
    std::optional<bool> keyUp(std::uint8_t keyCode);

    /// When a press that is held back is due; none when there is no such press.
    std::optional<Time> withheldUntil() const;
    /// The change to report now that it is due.
    std::optional<bool> timePassed(Time now);

    bool isReportedDown() const { return m_isReportedDown; }
    const std::set<std::uint8_t> &held() const { return m_held; }

private:
    std::optional<bool> reportDown(Time now);

    std::set<std::uint8_t> m_standIns;
    std::set<std::uint8_t> m_held;
    bool m_isReportedDown = false;
    bool m_isHeldBack = false;
    Time m_pressed;
    std::optional<Time> m_usedAsModifier;
};

} // namespace talmo
