#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

namespace talmo {

/// Decides which presses of the trigger key count as the dictation key. A keyboard's own fn key seldom reaches the
/// system, so another key stands in for it; one that is a modifier must still work as one. A plain value; the caller
/// passes the time.
class TriggerKeyFilter {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// A modifier used with another key is not a dictation. A press this soon after such a use probably belongs to the
    /// same typing, and would be mistaken for the second of a double-tap. It is withheld, and reported when this time
    /// has passed if the key is still down, so that dictating right after a Ctrl+C loses no speech.
    static constexpr auto withheldAfterUse = std::chrono::milliseconds(300);
    /// After this long the key has begun a dictation, and other keys no longer cancel it.
    static constexpr auto gestureBegins = std::chrono::milliseconds(150);

    /// All of these keys together count as one. Held keys stay held even if they are no longer in the set: their
    /// release is reported.
    void setKeyCodes(std::set<std::uint8_t> triggerKeys);
    bool isTriggerKey(std::uint8_t keyCode) const { return m_triggerKeys.contains(keyCode); }
    /// Whether the key's presses and releases count: it is a trigger key, or was one when it was pressed.
    bool isWatched(std::uint8_t keyCode) const { return isTriggerKey(keyCode) || m_held.contains(keyCode); }

    /// The change to report for this press or release: true if the key went down, false if up, none if nothing changed.
    std::optional<bool> keyDown(std::uint8_t keyCode, Time now);
    std::optional<bool> keyUp(std::uint8_t keyCode);

    /// When a withheld press is due; none if there is none.
    std::optional<Time> withheldUntil() const;
    /// The change to report if a withheld press is due.
    std::optional<bool> timePassed(Time now);

    bool isReportedDown() const { return m_isReportedDown; }
    const std::set<std::uint8_t> &held() const { return m_held; }

private:
    std::optional<bool> reportDown(Time now);

    std::set<std::uint8_t> m_triggerKeys;
    std::set<std::uint8_t> m_held;
    bool m_isReportedDown = false;
    bool m_isHeldBack = false;
    Time m_pressed;
    std::optional<Time> m_usedAsModifier;
};

} // namespace talmo
