#include "Base/Completion.h"

#include "Support/TestLoop.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(Completion, onlyTheFirstFinishCounts)
{
    auto completion = Completion<int>::make();
    const auto future = completion->future();
    completion->finish(1);
    completion->finish(2);
    completion->fail(std::make_exception_ptr(Cancelled()));
    EXPECT_EQ(future.result(), 1);
}

TEST(Completion, aDroppedOneFailsWithCancelledInsteadOfHanging)
{
    auto completion = Completion<int>::make();
    auto future = completion->future();
    completion.reset();
    EXPECT_TRUE(future.isFinished());
    EXPECT_THROW(future.result(), Cancelled);
}

TEST(Completion, aVoidOneThrowsToo)
{
    auto future = failed<void>(std::make_exception_ptr(Error(QStringLiteral("no"))));
    EXPECT_THROW(future.waitForFinished(), Error);
}

TEST(Error, saysItsDescriptionAndAForeignExceptionWhatItSays)
{
    EXPECT_EQ(localizedDescription(std::make_exception_ptr(Error(QStringLiteral("Schön.")))), QStringLiteral("Schön."));
    EXPECT_EQ(localizedDescription(std::make_exception_ptr(std::runtime_error("plain"))), QStringLiteral("plain"));
    EXPECT_FALSE(localizedDescription(std::make_exception_ptr(7)).isEmpty());
    EXPECT_STREQ(Error(QStringLiteral("é")).what(), "\xc3\xa9");
}

} // namespace talmo::test
