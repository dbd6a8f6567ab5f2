#pragma once

#include "Base/Clock.h"

#include <optional>

namespace talmo {

/// The gesture behind the current recording: holding the key, or a double-tap (hands-free).
enum class ActiveMode { Hold, Toggle };

/// Start recording, stop recording.
enum class FnGestureSignal { Down, Up };

/// Turns presses and releases of the key into the two dictation gestures. A plain value without timers: the caller
/// passes the time and runs the hold timer. Downs and ups must alternate.
class FnGestureRecognizer {
public:
    /// How long the key must stay down to count as held.
    static constexpr Duration holdThreshold = std::chrono::milliseconds(150);
    /// The longest gap between a release and the next press that still counts as a double-tap.
    static constexpr Duration doubleTapWindow = std::chrono::milliseconds(300);

    struct DownResult {
        std::optional<FnGestureSignal> signal;
        /// The caller must start the hold timer.
        bool needsHoldConfirmation = false;
        bool operator==(const DownResult &) const = default;
    };

    DownResult fnDown(Instant now);
    /// Up or nullopt.
    std::optional<FnGestureSignal> fnUp(Instant now);
    /// Call when the hold timer has fired and the key is still down. True if the press has just become a hold.
    bool confirmHold();

    std::optional<ActiveMode> activeMode() const { return m_activeMode; }
    std::optional<Instant> lastReleaseTime() const { return m_lastReleaseTime; }
    bool awaitingHoldConfirmation() const { return m_awaitingHoldConfirmation; }

private:
    std::optional<ActiveMode> m_activeMode;
    std::optional<Instant> m_lastReleaseTime;
    bool m_awaitingHoldConfirmation = false;
};

} // namespace talmo
