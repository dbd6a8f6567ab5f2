#pragma once

#include "Base/Clock.h"
#include "Base/Completion.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace talmo::test {

/// Virtual time. For one thread.
class ManualClock final : public Clock {
public:
    Instant now() const override { return m_now; }
    QFuture<void> sleep(Duration duration, std::stop_token stop) override;

    /// Advances time, running the event loop after each sleep that becomes due.
    void advance(Duration duration);
    /// The machine sleeps: nothing is due before the end of it.
    void suspend(Duration duration);

    /// The number of sleeps that are neither due nor cancelled.
    std::size_t sleeperCount() const;
    /// The durations of all sleeps so far, in order.
    const std::vector<Duration> &requestedSleeps() const { return m_requested; }

private:
    struct Sleeper {
        Instant due;
        std::shared_ptr<Completion<void>> completion = Completion<void>::make();
        std::optional<std::stop_callback<std::function<void()>>> onStop;
    };

    std::shared_ptr<Sleeper> takeNextDue(Instant until);

    Instant m_now{std::chrono::hours(1)};
    std::vector<std::shared_ptr<Sleeper>> m_sleepers;
    std::vector<Duration> m_requested;
};

} // namespace talmo::test
