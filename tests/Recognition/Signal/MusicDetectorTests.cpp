#include "Recognition/Signal/MusicDetector.h"

#include "Support/SyntheticAudio.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

double shareOf(MusicDetector &steady, const Sound &sound)
{
    inPieces(samplesOf(sound), [&steady](std::span<const std::int16_t> piece) { steady.add(piece); });
    return steady.share();
}

double shareOf(const Sound &sound)
{
    MusicDetector steady;
    return shareOf(steady, sound);
}

} // namespace

TEST(MusicDetector, chordsAreMostlySteady)
{
    EXPECT_GT(shareOf(chords(4, 0.1)), 0.75);
    EXPECT_GT(shareOf(chords(4, 0.1) + noise(4, 0.003)), 0.75);
    EXPECT_LE(shareOf(chords(4, 0.1)), 1.0);
}

TEST(MusicDetector, voiceIsHardlySteady)
{
    EXPECT_LT(shareOf(voice(4, 0.1)), 0.3);
}

TEST(MusicDetector, noiseIsHardlySteady)
{
    EXPECT_LT(shareOf(noise(4, 0.1)), 0.1);
}

TEST(MusicDetector, voiceOverMusicIsNotSteady)
{
    EXPECT_LT(shareOf(voice(4, 0.1) + chords(4, 0.05)), 0.6);
}

TEST(MusicDetector, silenceIsNotSteady)
{
    EXPECT_EQ(shareOf({}), 0);
    EXPECT_EQ(shareOf(silence(2)), 0);
    EXPECT_EQ(shareOf(chords(0.1, 0.1)), 0);
}

TEST(MusicDetector, restartsOnReset)
{
    MusicDetector steady;
    EXPECT_GT(shareOf(steady, chords(4, 0.1)), 0.75);
    steady.reset();
    EXPECT_EQ(steady.share(), 0);
    EXPECT_LT(shareOf(steady, voice(4, 0.1)), 0.3);
}

} // namespace talmo::test
