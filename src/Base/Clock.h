#pragma once

#include <QFuture>

#include <chrono>
#include <stop_token>

namespace talmo {

using Duration = std::chrono::nanoseconds;

/// Names the time line of Clock: monotonic, and it runs on while the machine sleeps.
struct ContinuousTime {
    using duration = Duration;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<ContinuousTime>;
    static constexpr bool is_steady = true;
};
using Instant = ContinuousTime::time_point;

/// The only source of time for the logic, so that tests can run it in virtual time.
class Clock {
public:
    virtual ~Clock() = default;

    virtual Instant now() const = 0;

    /// Finishes when `duration` has passed, never early, in the thread that awaits it; fails with Cancelled as soon
    /// as a stop is requested. Called on, and awaited in, a thread with an event loop.
    virtual QFuture<void> sleep(Duration duration, std::stop_token stop = {}) = 0;
};

} // namespace talmo
