#include "Recognition/PocketSphinx/SearchWidth.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(SearchWidth, followsMeasuredSpeedWithHysteresis)
{
    constexpr auto narrow = SearchWidth::Narrow;
    constexpr auto wide = SearchWidth::Wide;
    EXPECT_GT(mostHypotheses(wide), mostHypotheses(narrow));
    EXPECT_EQ(widthAfterRecognising(narrow, 0.1), wide);
    EXPECT_EQ(widthAfterRecognising(narrow, 0.2), narrow);
    EXPECT_EQ(widthAfterRecognising(wide, 0.2), wide);
    EXPECT_EQ(widthAfterRecognising(wide, 0.4), narrow);
}

TEST(SearchWidth, staysUntilSpeedIsKnown)
{
    EXPECT_EQ(widthAfterRecognising(SearchWidth::Wide, std::nullopt), SearchWidth::Wide);
    EXPECT_EQ(widthAfterRecognising(SearchWidth::Narrow, std::nullopt), SearchWidth::Narrow);
}

} // namespace talmo::test
