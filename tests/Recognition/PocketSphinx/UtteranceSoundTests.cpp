#include "Recognition/PocketSphinx/UtteranceSound.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

using Samples = std::vector<std::int16_t>;

/// Makes the reduced sound recognisable.
void addTen(std::span<const std::int16_t> samples, Samples &reduced)
{
    for (const auto sample : samples) {
        reduced.push_back(static_cast<std::int16_t>(sample + 10));
    }
}

} // namespace

TEST(UtteranceSound, findsQuietestPassage)
{
    UtteranceSound sound;
    const Samples samples{9, -8, 7, 1, -2, 0, 6, 5};
    sound.add(samples);
    EXPECT_THAT(sound.quietest(3), ElementsAre(1, -2, 0));
    EXPECT_THAT(sound.quietest(8), ElementsAreArray(samples));
    EXPECT_TRUE(sound.quietest(9).empty());
}

TEST(UtteranceSound, tellsQuietEndFromSpeech)
{
    UtteranceSound sound;
    const Samples room{30, -30, 20, -30, 30, -20};
    sound.add(room);
    const Samples speech{900, -700, 800, -900};
    sound.add(speech);
    EXPECT_FALSE(sound.endsQuietly(4, 2));
    sound.add(room);
    EXPECT_TRUE(sound.endsQuietly(6, 2));
    EXPECT_FALSE(sound.endsQuietly(8, 2)) << "speech reaches into it";
    const Samples closingConsonant{30, 90};
    sound.add(closingConsonant);
    EXPECT_FALSE(sound.endsQuietly(6, 2)) << "a single frame of it is louder";
    EXPECT_FALSE(sound.endsQuietly(20, 2)) << "it is longer than the utterance";
}

TEST(UtteranceSound, microphonesOwnNoiseIsQuiet)
{
    UtteranceSound sound;
    sound.add(Samples(8, 0));
    const Samples dither{9, -9, 8, -9};
    sound.add(dither);
    EXPECT_TRUE(sound.endsQuietly(4, 2));
}

TEST(UtteranceSound, continuesWithoutNoiseAsIfAlwaysReduced)
{
    UtteranceSound sound;
    const Samples first{1, 2};
    EXPECT_THAT(sound.add(first, &addTen, false), ElementsAre(1, 2));
    EXPECT_THAT(sound.recognised(), ElementsAre(1, 2));
    sound.continueWithoutNoise();
    EXPECT_THAT(sound.add(Samples{3}, &addTen, true), ElementsAre(13));
    EXPECT_THAT(sound.recognised(), ElementsAre(11, 12, 13));
    EXPECT_TRUE(sound.withoutNoise().empty());
}

} // namespace talmo::test
