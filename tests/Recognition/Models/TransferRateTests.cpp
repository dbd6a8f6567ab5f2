#include "Recognition/Models/TransferRate.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(TransferRate, isThatOfTheLastSeconds)
{
    using namespace std::chrono_literals;
    TransferRate rate;
    const Instant start{};
    EXPECT_EQ(rate.perSecond(), std::nullopt);
    rate.add(start, 0);
    rate.add(start + 500ms, 1000);
    EXPECT_EQ(rate.perSecond(), std::nullopt);
    rate.add(start + 2s, 4000);
    EXPECT_EQ(rate.perSecond(), 2000);
    rate.add(start + 60s, 4000);
    rate.add(start + 65s, 9000);
    EXPECT_EQ(rate.perSecond(), 1000);
    rate.add(start + 66s, 0); // A download that began anew.
    EXPECT_EQ(rate.perSecond(), std::nullopt);
}

} // namespace talmo::test
