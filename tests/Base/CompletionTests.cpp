#include "Base/Completion.h"

#include "Support/TestLoop.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(Completion, onlyFirstFinishCounts)
{
    auto completion = Completion<int>::make();
    const auto future = completion->future();
    completion->finish(1);
    completion->finish(2);
    completion->fail(std::make_exception_ptr(Cancelled()));
    EXPECT_EQ(future.result(), 1);
}

TEST(Completion, droppedCompletionFailsWithCancelled)
{
    auto completion = Completion<int>::make();
    auto future = completion->future();
    completion.reset();
    EXPECT_TRUE(future.isFinished());
    EXPECT_THROW(future.result(), Cancelled);
}

TEST(Completion, voidCompletionRethrows)
{
    auto future = makeFailedFuture<void>(std::make_exception_ptr(Error(QStringLiteral("no"))));
    EXPECT_THROW(future.waitForFinished(), Error);
}

} // namespace talmo::test
