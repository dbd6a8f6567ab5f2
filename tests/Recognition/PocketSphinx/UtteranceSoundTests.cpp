#include "Recognition/PocketSphinx/UtteranceSound.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::ElementsAreArray;

TEST(UtteranceSound, findsQuietestPassage)
{
    UtteranceSound sound;
    const std::vector<std::int16_t> samples{9, -8, 7, 1, -2, 0, 6, 5};
    sound.add(samples, samples, true);
    EXPECT_THAT(sound.quietest(3), ElementsAre(1, -2, 0));
    EXPECT_THAT(sound.quietest(8), ElementsAreArray(samples));
    EXPECT_TRUE(sound.quietest(9).empty());
}

TEST(UtteranceSound, continuesWithoutNoiseAsIfAlwaysReduced)
{
    UtteranceSound sound;
    sound.add(std::vector<std::int16_t>{1, 2}, std::vector<std::int16_t>{11, 12}, false);
    EXPECT_THAT(sound.recognised(), ElementsAre(1, 2));
    sound.continueWithoutNoise();
    sound.add(std::vector<std::int16_t>{3}, std::vector<std::int16_t>{13}, true);
    EXPECT_THAT(sound.recognised(), ElementsAre(11, 12, 13));
    EXPECT_TRUE(sound.withoutNoise().empty());
}

} // namespace talmo::test
