#include "Recognition/Signal/SteadySound.h"

#include "Support/MadeSounds.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

double shareOf(SteadySound &steady, const Sound &sound)
{
    inPieces(samplesOf(sound), [&steady](std::span<const std::int16_t> piece) { steady.add(piece); });
    return steady.share();
}

double shareOf(const Sound &sound)
{
    SteadySound steady;
    return shareOf(steady, sound);
}

} // namespace

TEST(SteadySound, chordsAreMostlySteady)
{
    EXPECT_GT(shareOf(chords(4, 0.1)), 0.75);
    EXPECT_GT(shareOf(chords(4, 0.1) + noise(4, 0.003)), 0.75);
    EXPECT_LE(shareOf(chords(4, 0.1)), 1.0);
}

TEST(SteadySound, voiceIsHardlySteady)
{
    EXPECT_LT(shareOf(voice(4, 0.1)), 0.3);
}

TEST(SteadySound, noiseIsHardlySteady)
{
    EXPECT_LT(shareOf(noise(4, 0.1)), 0.1);
}

TEST(SteadySound, voiceOverMusicIsNotSteady)
{
    EXPECT_LT(shareOf(voice(4, 0.1) + chords(4, 0.05)), 0.6);
}

TEST(SteadySound, silenceIsNotSteady)
{
    EXPECT_EQ(shareOf({}), 0);
    EXPECT_EQ(shareOf(silence(2)), 0);
    EXPECT_EQ(shareOf(chords(0.1, 0.1)), 0);
}

TEST(SteadySound, restartsOnReset)
{
    SteadySound steady;
    EXPECT_GT(shareOf(steady, chords(4, 0.1)), 0.75);
    steady.reset();
    EXPECT_EQ(steady.share(), 0);
    EXPECT_LT(shareOf(steady, voice(4, 0.1)), 0.3);
}

} // namespace talmo::test
