#include "Recognition/PocketSphinx/UtteranceSegmenter.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

constexpr std::size_t second = 16000;

} // namespace

TEST(UtteranceSegmenter, endsWhenSpeechStops)
{
    UtteranceSegmenter segmenter;
    EXPECT_FALSE(segmenter.endsHere(false, 50, second));
    EXPECT_FALSE(segmenter.endsHere(true, 0, second));
    EXPECT_TRUE(segmenter.endsHere(false, 20, 2 * second));
    EXPECT_FALSE(segmenter.endsHere(false, 40, 2 * second));
}

TEST(UtteranceSegmenter, longUtterancesEndAtShorterPauses)
{
    UtteranceSegmenter segmenter;
    EXPECT_FALSE(segmenter.endsHere(true, 8, 8 * second));
    EXPECT_FALSE(segmenter.endsHere(true, 7, 8 * second + 1));
    EXPECT_TRUE(segmenter.endsHere(true, 8, 8 * second + 1));
    EXPECT_FALSE(segmenter.endsHere(true, 3, 14 * second));
    EXPECT_FALSE(segmenter.endsHere(true, 2, 14 * second + 1));
    EXPECT_TRUE(segmenter.endsHere(true, 3, 14 * second + 1));
}

} // namespace talmo::test
