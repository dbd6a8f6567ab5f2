#include "Recognition/Signal/SnrEstimator.h"

#include "Support/SyntheticAudio.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace talmo::test {

namespace {

double voiceAboveNoise(double voiceAmplitude, double noiseAmplitude)
{
    SnrEstimator level;
    level.add(samplesOf(voice(10, voiceAmplitude) + noise(10, noiseAmplitude)));
    return level.voiceAboveNoise();
}

} // namespace

TEST(SnrEstimator, measuresSignalToNoiseRatio)
{
    constexpr double tolerance = 2;
    const double quiet = voiceAboveNoise(0.1, 0.001);
    EXPECT_NEAR(voiceAboveNoise(0.1, 0.01), quiet - 20, tolerance);
    EXPECT_NEAR(voiceAboveNoise(0.02, 0.002), quiet - 20, tolerance) << "the absolute level does not matter";
}

TEST(SnrEstimator, assumesQuietRoomUntilThereIsEnoughAudio)
{
    SnrEstimator level;
    const double atFirst = level.voiceAboveNoise();
    EXPECT_GT(atFirst, 50);
    level.add(samplesOf(noise(0.5, 0.1)));
    EXPECT_EQ(level.voiceAboveNoise(), atFirst);
    level.add(samplesOf(noise(2, 0.1)));
    EXPECT_LT(level.voiceAboveNoise(), 5);
}

TEST(SnrEstimator, handlesFullScaleAndSilence)
{
    SnrEstimator level;
    level.add(std::vector<std::int16_t>(rate, -32768));
    EXPECT_EQ(level.voiceAboveNoise(), 0);
    level.add(std::vector<std::int16_t>(rate, 0));
    EXPECT_NEAR(level.voiceAboveNoise(), 90, 1);
}

} // namespace talmo::test
