#pragma once

#include "Base/Clock.h"

namespace talmo {

/// The boot-time clock, which runs on in suspend. Its timers fire when they are due and never before; Qt's own are
/// allowed a few per cent either way, too much for a hold of 150 ms.
class TimerFdClock final : public Clock {
public:
    Instant now() const override;
    QFuture<void> sleep(Duration duration, std::stop_token stop) override;

    /// Ends every sleep, and those to come, with Cancelled: nothing waits any longer when the program ends. Any thread.
    void cancelAll() { m_ending.request_stop(); }

private:
    std::stop_source m_ending;
};

} // namespace talmo
