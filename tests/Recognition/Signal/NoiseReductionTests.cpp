#include "Recognition/Signal/NoiseReduction.h"

#include "Support/SyntheticAudio.h"

#include <gtest/gtest.h>

#include <algorithm>
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
    inPieces(samples, [&](std::span<const std::int16_t> piece) { reduction.reduce(piece, all); });
    return all;
}

bool isWorthwhile(NoiseReduction &reduction, double noiseAmplitude)
{
    constexpr double seconds = 90; // Long enough for earlier audio to have little weight.
    reduction.measure(samplesOf(voice(seconds, 0.1) + noise(seconds, noiseAmplitude)));
    return reduction.isWorthwhile();
}

/// Noise that swells and fades, as a street does, by 16 dB.
Sound unsteadyNoise(double seconds, double amplitude)
{
    Sound sound = noise(seconds, amplitude);
    for (std::size_t index = 0; index < sound.size(); ++index) {
        sound[index] *= std::pow(10, 0.4 * std::sin(static_cast<double>(index) / rate));
    }
    return sound;
}

} // namespace

TEST(NoiseReduction, removesNoiseAndKeepsVoice)
{
    const auto onlyNoise = samplesOf(noise(4, 0.01));
    NoiseReduction reduction;
    const auto hush = reduced(reduction, onlyNoise);
    EXPECT_LT(decibels(lastSecondOf(hush)), decibels(lastSecondOf(onlyNoise)) - 10);
    const auto clear = samplesOf(voice(4, 0.1));
    const auto speech = reduced(reduction, samplesOf(voice(4, 0.1) + noise(4, 0.01)));
    EXPECT_NEAR(decibels(lastSecondOf(speech)), decibels(lastSecondOf(clear)), 2);
}

TEST(NoiseReduction, flushesRemainingSamples)
{
    NoiseReduction reduction;
    std::vector<std::int16_t> sound;
    reduction.reduce(std::vector<std::int16_t>(1000), sound);
    EXPECT_EQ(sound.size(), 960);
    EXPECT_EQ(reduction.flush().size(), 160);
    EXPECT_TRUE(reduction.flush().empty());
    reduction.reduce({}, sound);
    EXPECT_EQ(sound.size(), 960);
    reduction.reduce(std::vector<std::int16_t>(160), sound);
    EXPECT_EQ(sound.size(), 960 + 160);
}

TEST(NoiseReduction, pieceSizesDoNotChangeTheResult)
{
    const auto samples = samplesOf(voice(1, 0.1) + noise(1, 0.01));
    NoiseReduction atOnce;
    std::vector<std::int16_t> whole;
    atOnce.reduce(samples, whole);
    NoiseReduction bitByBit;
    std::vector<std::int16_t> pieces;
    for (std::size_t at = 0, length = 1; at < samples.size(); at += length, length = length % 700 + 37) {
        bitByBit.reduce(std::span(samples).subspan(at).first(std::min(length, samples.size() - at)), pieces);
    }
    EXPECT_EQ(pieces, whole);
}

TEST(NoiseReduction, isWorthwhileInNoiseWithHysteresis)
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

TEST(NoiseReduction, isWorthwhileInUnsteadyNoiseOnlyIfLoud)
{
    constexpr double seconds = 90;
    constexpr double amplitude = 0.007;
    NoiseReduction steady;
    steady.measure(samplesOf(voice(seconds, 0.1) + noise(seconds, amplitude)));
    EXPECT_TRUE(steady.isWorthwhile());
    NoiseReduction unsteady;
    unsteady.measure(samplesOf(voice(seconds, 0.1) + unsteadyNoise(seconds, amplitude)));
    EXPECT_FALSE(unsteady.isWorthwhile());
    unsteady.measure(samplesOf(voice(seconds, 0.1) + unsteadyNoise(seconds, 5 * amplitude)));
    EXPECT_TRUE(unsteady.isWorthwhile());
}

} // namespace talmo::test
