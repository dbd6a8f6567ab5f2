#pragma once

#include "Base/Clock.h"
#include "Base/Completion.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace talmo::test {

/// Virtual time for one thread.
class ManualClock final : public Clock {
public:
    Instant now() const override { return m_now; }
    QFuture<void> sleep(Duration duration, std::stop_token stop) override;

    /// Moves on, letting everything settle between one due sleep and the next.
    void advance(Duration duration);

    /// Sleeps that are neither due nor cancelled.
    std::size_t sleeperCount() const;
    /// The lengths of all sleeps ever begun, in order.
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
