#pragma once

#include "Base/Clock.h"

namespace talmo {

/// The boot-time clock, which continues during suspend. Its timers never fire early, whereas Qt's may be off by a few
/// per cent either way, too much for a hold of 150 ms.
class TimerFdClock final : public Clock {
public:
    Instant now() const override;
    QFuture<void> sleep(Duration duration, std::stop_token stop) override;

    /// Ends all current and future sleeps with Cancelled, so that nothing is still waiting when the program quits. Any
    /// thread.
    void cancelAll() { m_ending.request_stop(); }

private:
    std::stop_source m_ending;
};

} // namespace talmo
