#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>

namespace talmo {

/// A key as the X server reports it raw.
struct RawKey {
    std::uint8_t keyCode = 0;
    std::uint16_t sourceDevice = 0;
    bool isDown = false;
    std::uint32_t time = 0; ///< Milliseconds of the server.
    bool operator==(const RawKey &) const = default;
};

/// Takes auto-repeat out of the raw keys. Raw keys do not repeat, but a server that is nested in another one gets the
/// repeats of the outer one as pairs of release and press; taken for real they would look like double-taps.
class RepeatPairFilter {
public:
    /// How close together such a pair is, in milliseconds.
    static constexpr std::uint32_t pairGap = 1;

    explicit RepeatPairFilter(std::function<bool(std::uint8_t keyCode)> isWatched);

    void push(const RawKey &key) { m_queue.push_back(key); }

    /// The next key that is real. None when there is none, or when a release may be the first half of a pair whose
    /// other half is still on its way: then isHoldingBack() is true, and the caller asks again, with
    /// `isPatienceOver` once it has waited. Only devices where pairs were seen are waited for.
    std::optional<RawKey> take(bool isPatienceOver);
    bool isHoldingBack() const { return !m_queue.empty(); }

private:
    bool isPair(const RawKey &release, const RawKey &press) const;

    std::function<bool(std::uint8_t)> m_isWatched;
    std::deque<RawKey> m_queue;
    std::set<std::uint16_t> m_repeatingDevices;
};

} // namespace talmo
