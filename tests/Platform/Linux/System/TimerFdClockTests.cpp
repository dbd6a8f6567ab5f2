#include "Platform/Linux/System/TimerFdClock.h"

#include "Base/Error.h"
#include "Support/TestLoop.h"

#include <gtest/gtest.h>

#include <thread>

namespace talmo::test {

using namespace std::chrono_literals;

TEST(TimerFdClock, neverFiresEarly)
{
    TimerFdClock clock;
    for (int round = 0; round < 20; ++round) {
        const Instant before = clock.now();
        const auto future = clock.sleep(7ms, {});
        ASSERT_TRUE(waitFor(future));
        EXPECT_GE(clock.now() - before, 7ms);
    }
}

TEST(TimerFdClock, holdTimerNeverFiresEarly)
{
    TimerFdClock clock;
    const Instant before = clock.now();
    ASSERT_TRUE(waitFor(clock.sleep(150ms, {})));
    EXPECT_GE(clock.now() - before, 150ms);
}

TEST(TimerFdClock, failsImmediatelyWhenStopped)
{
    TimerFdClock clock;
    std::stop_source before;
    before.request_stop();
    EXPECT_THROW(clock.sleep(1h, before.get_token()).waitForFinished(), Cancelled);

    std::stop_source during;
    auto future = clock.sleep(1h, during.get_token());
    std::thread([&during] { during.request_stop(); }).join();
    ASSERT_TRUE(waitFor(future));
    EXPECT_THROW(future.waitForFinished(), Cancelled);
    settle();
}

TEST(TimerFdClock, zeroSleepEndsOnLaterLoopIteration)
{
    TimerFdClock clock;
    const auto future = clock.sleep(0ms, {});
    EXPECT_FALSE(future.isFinished());
    EXPECT_TRUE(waitFor(future));
}

} // namespace talmo::test
