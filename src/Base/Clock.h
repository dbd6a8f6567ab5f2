#pragma once

#include <QFuture>

#include <chrono>
#include <stop_token>

namespace talmo {

using Duration = std::chrono::nanoseconds;

/// Clock's time line: monotonic, and it keeps running while the machine sleeps.
struct ContinuousTime {
    using duration = Duration;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<ContinuousTime>;
    static constexpr bool is_steady = true;
};
using Instant = ContinuousTime::time_point;

/// The logic's only source of time, so that tests can run in virtual time.
class Clock {
public:
    virtual ~Clock() = default;

    virtual Instant now() const = 0;

    /// Finishes on the awaiting thread once `duration` has passed, never early; fails with Cancelled as soon as a stop
    /// is requested. To be called and awaited on a thread with an event loop.
    virtual QFuture<void> sleep(Duration duration, std::stop_token stop = {}) = 0;
};

} // namespace talmo
