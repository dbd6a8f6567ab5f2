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

    /// A modifier used with another key is not a dictation, and a press this soon after it is part of the same
    /// typing: it would otherwise count as the second of a double-tap.
    static constexpr auto withheldAfterUse = std::chrono::milliseconds(300);
    /// Held for this long, the key has begun a dictation, and other keys no longer take it back.
    static constexpr auto gestureBegins = std::chrono::milliseconds(150);

    /// All of them together count as one key.
    void setKeyCodes(std::set<std::uint8_t> standIns);
    bool isStandIn(std::uint8_t keyCode) const { return m_standIns.contains(keyCode); }

    /// The change to report for this press or release: the key went down, up, or nothing changed.
    std::optional<bool> keyDown(std::uint8_t keyCode, Time now);
    std::optional<bool> keyUp(std::uint8_t keyCode, Time now);

    bool isReportedDown() const { return m_isReportedDown; }

private:
    std::set<std::uint8_t> m_standIns;
    std::set<std::uint8_t> m_held;
    bool m_isReportedDown = false;
    Time m_pressed;
    std::optional<Time> m_usedAsModifier;
};

} // namespace talmo
