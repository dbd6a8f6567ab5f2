#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>

namespace talmo {

/// A raw key event from the X server.
struct RawKey {
    std::uint8_t keyCode = 0;
    std::uint16_t sourceDevice = 0;
    bool isDown = false;
    std::uint32_t time = 0; ///< The server's time, in milliseconds.
    bool operator==(const RawKey &) const = default;
};

/// Removes auto-repeat from raw key events. Raw keys do not repeat, but a server nested in another one receives the
/// outer server's repeats as pairs of release and press, which would look like double-taps.
class RepeatPairFilter {
public:
    /// The most time between the two events of a pair, in milliseconds.
    static constexpr std::uint32_t pairGap = 1;

    explicit RepeatPairFilter(std::function<bool(std::uint8_t keyCode)> isWatched);

    void push(const RawKey &key) { m_queue.push_back(key); }

    /// The next real key event. None if nothing is queued, or if a release may be the first half of a pair whose second
    /// half has not arrived: isHoldingBack() is then true, and the caller calls again with `hasTimedOut` after a
    /// timeout. Waits only for devices that have sent pairs.
    std::optional<RawKey> take(bool hasTimedOut);
    bool isHoldingBack() const { return !m_queue.empty(); }

private:
    bool isPair(const RawKey &release, const RawKey &press) const;

    std::function<bool(std::uint8_t)> m_isWatched;
    std::deque<RawKey> m_queue;
    std::set<std::uint16_t> m_repeatingDevices;
};

} // namespace talmo
