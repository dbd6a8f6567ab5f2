#include "Recognition/Signal/NoiseReduction.h"

#include "Support/MadeSounds.h"

#include <gtest/gtest.h>

#include <span>

namespace talmo::test {

namespace {

double decibels(std::span<const std::int16_t> samples)
{
    double power = 0;
    for (const double sample : samples) {
        power += sample * sample / static_cast<double>(samples.size());
    }
    return 10 * std::log10(power);
}

std::span<const std::int16_t> lastSecondOf(const std::vector<std::int16_t> &samples)
{
    return std::span(samples).last(rate);
}

std::vector<std::int16_t> reduced(NoiseReduction &reduction, const std::vector<std::int16_t> &samples)
{
    std::vector<std::int16_t> all;
    inPieces(samples, [&](std::span<const std::int16_t> piece) {
        const auto some = reduction.reduce(piece);
        all.insert(all.end(), some.begin(), some.end());
    });
    return all;
}

double voiceAboveNoise(double voiceAmplitude, double noiseAmplitude)
{
    NoiseLevel level;
    level.add(samplesOf(voice(10, voiceAmplitude) + noise(10, noiseAmplitude)));
    return level.voiceAboveNoise();
}

bool isWorthwhile(NoiseReduction &reduction, double noiseAmplitude)
{
    constexpr double seconds = 90; // Long enough for what was before to count for little.
    reduction.measure(samplesOf(voice(seconds, 0.1) + noise(seconds, noiseAmplitude)));
    return reduction.isWorthwhile();
}

} // namespace

TEST(NoiseLevel, isThatOfTheNoiseBelowTheVoice)
{
    constexpr double tolerance = 2;
    const double quiet = voiceAboveNoise(0.1, 0.001);
    EXPECT_NEAR(voiceAboveNoise(0.1, 0.01), quiet - 20, tolerance);
    EXPECT_NEAR(voiceAboveNoise(0.02, 0.002), quiet - 20, tolerance) << "it is not how loud it all is that counts";
}

TEST(NoiseLevel, isLowWhileThereIsTooLittleToTell)
{
    NoiseLevel level;
    const double atFirst = level.voiceAboveNoise();
    EXPECT_GT(atFirst, 50);
    level.add(samplesOf(noise(0.5, 0.1)));
    EXPECT_EQ(level.voiceAboveNoise(), atFirst);
    level.add(samplesOf(noise(2, 0.1)));
    EXPECT_LT(level.voiceAboveNoise(), 5);
}

TEST(NoiseLevel, copesWithTheLoudestAndWithNothingAtAll)
{
    NoiseLevel level;
    level.add(std::vector<std::int16_t>(rate, -32768));
    EXPECT_EQ(level.voiceAboveNoise(), 0);
    level.add(std::vector<std::int16_t>(rate, 0));
    EXPECT_NEAR(level.voiceAboveNoise(), 90, 1);
}

TEST(NoiseReduction, takesNoiseAwayAndLeavesTheVoice)
{
    const auto onlyNoise = samplesOf(noise(4, 0.01));
    NoiseReduction reduction;
    const auto hush = reduced(reduction, onlyNoise);
    EXPECT_LT(decibels(lastSecondOf(hush)), decibels(lastSecondOf(onlyNoise)) - 10);
    const auto clear = samplesOf(voice(4, 0.1));
    const auto speech = reduced(reduction, samplesOf(voice(4, 0.1) + noise(4, 0.01)));
    EXPECT_NEAR(decibels(lastSecondOf(speech)), decibels(lastSecondOf(clear)), 2);
}

TEST(NoiseReduction, losesNothingAtTheEnd)
{
    NoiseReduction reduction;
    EXPECT_EQ(reduction.reduce(std::vector<std::int16_t>(1000)).size(), 960);
    EXPECT_EQ(reduction.flush().size(), 160);
    EXPECT_TRUE(reduction.flush().empty());
    EXPECT_TRUE(reduction.reduce({}).empty());
    EXPECT_EQ(reduction.reduce(std::vector<std::int16_t>(160)).size(), 160);
}

TEST(NoiseReduction, isForNoisyPlacesAndDoesNotChangeItsMindAtOnce)
{
    NoiseReduction reduction;
    EXPECT_FALSE(reduction.isWorthwhile());
    EXPECT_FALSE(isWorthwhile(reduction, 0.0003));
    constexpr double between = 0.0022;
    EXPECT_FALSE(isWorthwhile(reduction, between));
    EXPECT_TRUE(isWorthwhile(reduction, 0.03));
    EXPECT_TRUE(isWorthwhile(reduction, between));
    EXPECT_FALSE(isWorthwhile(reduction, 0.0003));
}

} // namespace talmo::test
