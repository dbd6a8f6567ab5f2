#include "Recognition/Models/ModelSize.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(ModelSize, isRoundedToWholeMegabytes)
{
    EXPECT_EQ(readableSize(66'499'999), u"66 MB"_s);
    EXPECT_EQ(readableSize(66'500'000), u"67 MB"_s);
    EXPECT_EQ(readableSize(2'500'000'000), u"2500 MB"_s);
}

TEST(ModelSize, isNeverLessThanOneMegabyte)
{
    EXPECT_EQ(readableSize(1), u"1 MB"_s);
}

TEST(ModelSize, marksApproximateAndUnknownSizes)
{
    ModelEntry entry;
    EXPECT_EQ(readableSize(entry), QString());
    entry.approximateMegabytes = 80;
    EXPECT_EQ(readableSize(entry), u"about 80 MB"_s);
    entry.size = 66'800'000;
    EXPECT_EQ(readableSize(entry), u"67 MB"_s);
}

} // namespace talmo::test
