#include "Base/SerialExecutor.h"

#include "Base/Task.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <QThread>

#include <gmock/gmock.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

namespace talmo::test {

namespace {

QCoro::Task<int> answerAfter(QFuture<void> gate, std::vector<int> *order, int value)
{
    order->push_back(value);
    co_await gate;
    order->push_back(value + 100);
    co_return value;
}

QCoro::Task<int> throwing()
{
    throw std::runtime_error("from the actor");
    co_return 0;
}

QCoro::Task<QThread *> threadAfterwards(std::shared_ptr<SerialExecutor> executor)
{
    const QFuture<int> answer = executor->call([] { return 1; });
    co_await answer;
    co_return QThread::currentThread();
}

} // namespace

TEST(SerialExecutor, runsOnOwnThreadAndResumesOnCallers)
{
    const auto executor = SerialExecutor::onNewThread(u"test"_s);
    const QFuture<QThread *> future = executor->call([] { return QThread::currentThread(); });
    ASSERT_TRUE(waitFor(future));
    EXPECT_NE(future.result(), QThread::currentThread());
    EXPECT_EQ(future.result(), executor->context()->thread());

    QThread *resumedOn = nullptr;
    auto task = threadAfterwards(executor).then([&resumedOn](QThread *thread) { resumedOn = thread; });
    ASSERT_TRUE(waitFor([&resumedOn] { return resumedOn != nullptr; }));
    EXPECT_EQ(resumedOn, QThread::currentThread());
}

TEST(SerialExecutor, runsNextCallWhileOneIsSuspended)
{
    const auto executor = SerialExecutor::onNewThread(u"test"_s);
    auto gate = Completion<void>::make();
    std::vector<int> order;
    const auto gateFuture = gate->future();
    const auto first = executor->run<int>([&order, gateFuture] { return answerAfter(gateFuture, &order, 1); });
    const auto second = executor->run<int>([&order] { return answerAfter(makeReadyFuture(), &order, 2); });
    ASSERT_TRUE(waitFor(second));
    EXPECT_FALSE(first.isFinished());
    gate->finish();
    ASSERT_TRUE(waitFor(first));
    EXPECT_THAT(order, testing::ElementsAre(1, 2, 102, 101));
}

TEST(SerialExecutor, propagatesExceptionsOfFunctionsAndCoroutines)
{
    const auto executor = SerialExecutor::onNewThread(u"test"_s);
    auto called = executor->call([]() -> int { throw std::runtime_error("plain"); });
    auto run = executor->run<int>([] { return throwing(); });
    ASSERT_TRUE(waitFor(called));
    ASSERT_TRUE(waitFor(run));
    EXPECT_THROW(called.result(), std::runtime_error);
    EXPECT_THROW(run.result(), std::runtime_error);
}

TEST(SerialExecutor, destructionCancelsPendingCalls)
{
    auto executor = SerialExecutor::onNewThread(u"test"_s);
    auto isBusy = Completion<void>::make();
    std::atomic<bool> mayEnd = false;
    executor->post([&isBusy, &mayEnd] {
        isBusy->finish();
        mayEnd.wait(false);
    });
    isBusy->future().waitForFinished();
    auto never = executor->call([] { return 1; });
    std::jthread releaser([&mayEnd, thread = executor->context()->thread()] {
        // Wait until the destructor has requested interruption, which nothing else does.
        while (!thread->isInterruptionRequested()) {
            std::this_thread::yield();
        }
        mayEnd = true;
        mayEnd.notify_all();
    });
    executor.reset();
    EXPECT_THROW(never.result(), Cancelled);
}

TEST(SerialExecutor, onCurrentThreadRunsOnLaterLoopIteration)
{
    const auto executor = SerialExecutor::onCurrentThread();
    bool hasRun = false;
    executor->post([&hasRun] { hasRun = true; });
    EXPECT_FALSE(hasRun);
    settle();
    EXPECT_TRUE(hasRun);
    EXPECT_TRUE(executor->isCurrentThread());
}

TEST(SerialExecutor, logsExceptionsOfPostedWork)
{
    RecordingLog log;
    const auto executor = SerialExecutor::onCurrentThread();
    executor->post([] { throw std::runtime_error("lost"); });
    settle();
    EXPECT_THAT(log.lines(), testing::ElementsAre(u"general error: unexpected error: lost"_s));
}

TEST(SerialExecutor, canBeReleasedFromItsOwnThread)
{
    auto executor = SerialExecutor::onNewThread(u"test"_s);
    auto *raw = executor.get();
    auto done = Completion<void>::make();
    raw->post([held = executor, done]() mutable {
        held.reset();
        done->finish();
    });
    executor.reset();
    EXPECT_TRUE(waitFor(done->future()));
}

} // namespace talmo::test
