#include "Base/Task.h"

#include "Base/SerialExecutor.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace talmo::test {

namespace {

QCoro::Task<void> note(std::vector<int> *order, int value)
{
    order->push_back(value);
    co_return;
}

QCoro::Task<void> sleepOn(Clock *clock, std::stop_token stop)
{
    co_await clock->sleep(std::chrono::seconds(1), stop);
}

QCoro::Task<void> throwing()
{
    throw std::runtime_error("escaped");
    co_return;
}

} // namespace

TEST(Task, startsOnLaterLoopIterationNeverInline)
{
    const auto executor = SerialExecutor::onCurrentThread();
    std::vector<int> order;
    launch(*executor, [&order](std::stop_token) { return note(&order, 2); });
    order.push_back(1);
    settle();
    EXPECT_THAT(order, testing::ElementsAre(1, 2));
}

TEST(Task, canBeCancelledAndAwaited)
{
    const auto executor = SerialExecutor::onCurrentThread();
    ManualClock clock;
    const auto task = launch(*executor, [&clock](std::stop_token stop) { return sleepOn(&clock, stop); });
    settle();
    EXPECT_FALSE(task.finished().isFinished());
    task.cancel();
    settle();
    ASSERT_TRUE(task.finished().isFinished());
    EXPECT_TRUE(task.isCancelled());
    EXPECT_THROW(task.finished().waitForFinished(), Cancelled);
}

TEST(Task, emptyHandleCanBeCancelled)
{
    const TaskHandle none;
    EXPECT_FALSE(none);
    none.cancel();
    EXPECT_FALSE(none.isCancelled());
}

TEST(Task, logsExceptionsOfDetachedTask)
{
    RecordingLog log;
    logEscapes(throwing());
    settle();
    EXPECT_THAT(log.lines(), testing::ElementsAre(u"general error: unexpected error: escaped"_s));
}

TEST(ManualClock, wakesSleepersInDeadlineOrder)
{
    ManualClock clock;
    std::vector<int> order;
    const auto first = clock.sleep(std::chrono::milliseconds(20), {});
    const auto second = clock.sleep(std::chrono::milliseconds(10), {});
    const Instant before = clock.now();
    clock.advance(std::chrono::milliseconds(10));
    EXPECT_FALSE(first.isFinished());
    EXPECT_TRUE(second.isFinished());
    clock.advance(std::chrono::milliseconds(9));
    EXPECT_FALSE(first.isFinished());
    clock.advance(std::chrono::milliseconds(1));
    EXPECT_TRUE(first.isFinished());
    EXPECT_EQ(clock.now() - before, std::chrono::milliseconds(20));
}

} // namespace talmo::test
