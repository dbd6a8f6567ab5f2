#include "Recognition/PocketSphinx/SearchWidth.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(SearchWidth, isWideOnMachinesThatLoadQuickly)
{
    EXPECT_EQ(widthAfterLoading(0.25), SearchWidth::Wide);
    EXPECT_EQ(widthAfterLoading(0.5), SearchWidth::Narrow);
    EXPECT_GT(mostHypotheses(SearchWidth::Wide), mostHypotheses(SearchWidth::Narrow));
}

TEST(SearchWidth, followsMeasuredSpeedWithHysteresis)
{
    constexpr auto narrow = SearchWidth::Narrow;
    constexpr auto wide = SearchWidth::Wide;
    EXPECT_EQ(widthAfterRecognising(narrow, 0.3), wide);
    EXPECT_EQ(widthAfterRecognising(narrow, 0.6), narrow);
    EXPECT_EQ(widthAfterRecognising(wide, 0.6), wide);
    EXPECT_EQ(widthAfterRecognising(wide, 0.9), narrow);
}

TEST(SearchWidth, staysUntilSpeedIsKnown)
{
    EXPECT_EQ(widthAfterRecognising(SearchWidth::Wide, std::nullopt), SearchWidth::Wide);
    EXPECT_EQ(widthAfterRecognising(SearchWidth::Narrow, std::nullopt), SearchWidth::Narrow);
}

} // namespace talmo::test
