#include "Base/CancellableWait.h"

#include "Base/Completion.h"
#include "Base/Task.h"
#include "Support/TestLoop.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace talmo::test {

namespace {

QCoro::Task<void> noteOutcome(QFuture<void> wait, std::optional<bool> *outcome, bool *hasFailed)
{
    try {
        const bool hasCome = co_await hasElapsed(wait);
        *outcome = hasCome;
    } catch (const std::exception &) {
        *hasFailed = true;
    }
}

struct Waiting {
    std::shared_ptr<Completion<void>> wait = Completion<void>::make();
    std::optional<bool> outcome;
    bool hasFailed = false;

    Waiting() { logEscapes(noteOutcome(wait->future(), &outcome, &hasFailed)); }
};

QCoro::Task<void> noteBound(QFuture<void> bound, std::optional<bool> *outcome)
{
    const bool hasCome = co_await isTimeUp(bound);
    *outcome = hasCome;
}

} // namespace

TEST(CancellableWait, boundWhoseTimerFailsIsOver)
{
    const auto bound = Completion<void>::make();
    std::optional<bool> outcome;
    logEscapes(noteBound(bound->future(), &outcome));
    bound->fail(std::make_exception_ptr(std::runtime_error("broken")));
    settle();
    EXPECT_EQ(outcome, true);
}

TEST(CancellableWait, cancelledBoundIsNotOver)
{
    const auto bound = Completion<void>::make();
    std::optional<bool> outcome;
    logEscapes(noteBound(bound->future(), &outcome));
    bound->fail(std::make_exception_ptr(Cancelled()));
    settle();
    EXPECT_EQ(outcome, false);
}

TEST(CancellableWait, hasElapsedWhenItFinishes)
{
    Waiting waiting;
    settle();
    EXPECT_EQ(waiting.outcome, std::nullopt);
    waiting.wait->finish();
    settle();
    EXPECT_EQ(waiting.outcome, true);
}

TEST(CancellableWait, hasNotElapsedWhenCancelled)
{
    Waiting waiting;
    waiting.wait->fail(std::make_exception_ptr(Cancelled()));
    settle();
    EXPECT_EQ(waiting.outcome, false);
}

TEST(CancellableWait, passesOtherFailuresOn)
{
    Waiting waiting;
    waiting.wait->fail(std::make_exception_ptr(std::runtime_error("broken")));
    settle();
    EXPECT_EQ(waiting.outcome, std::nullopt);
    EXPECT_TRUE(waiting.hasFailed);
}

} // namespace talmo::test
