#include "Platform/Linux/SteadySound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace talmo::test {

namespace {

constexpr int rate = 16000;

using Sound = std::vector<double>;

Sound silence(double seconds)
{
    return Sound(static_cast<std::size_t>(seconds * rate));
}

/// Tones one upon the other that keep their pitch, and begin anew each second.
Sound chords(double seconds, double amplitude)
{
    Sound sound = silence(seconds);
    for (std::size_t index = 0; index < sound.size(); ++index) {
        const double time = static_cast<double>(index) / rate;
        const double base = std::fmod(time, 2) < 1 ? 220 : 262;
        for (const double interval : {1.0, 1.26, 1.5, 2.0}) {
            sound[index] += amplitude * std::sin(2 * std::numbers::pi * base * interval * time);
        }
    }
    return sound;
}

/// Something with the harmonics of a voice whose pitch rises and falls as in a sentence.
Sound voice(double seconds, double amplitude)
{
    Sound sound = silence(seconds);
    double phase = 0;
    for (std::size_t index = 0; index < sound.size(); ++index) {
        const double time = static_cast<double>(index) / rate;
        phase += 2 * std::numbers::pi * (120 + 20 * std::sin(5 * time)) / rate;
        for (int harmonic = 1; harmonic < 20; ++harmonic) {
            sound[index] += amplitude / harmonic * std::sin(harmonic * phase);
        }
        sound[index] *= std::fmod(time, 0.3) < 0.22 ? 1 : 0;
    }
    return sound;
}

Sound noise(double seconds, double amplitude)
{
    Sound sound = silence(seconds);
    std::minstd_rand generator;
    std::normal_distribution<double> normal(0, amplitude);
    for (auto &sample : sound) {
        sample = normal(generator);
    }
    return sound;
}

Sound operator+(Sound left, const Sound &right)
{
    for (std::size_t index = 0; index < left.size(); ++index) {
        left[index] += right[index];
    }
    return left;
}

/// In pieces of no particular length, as they come.
double shareOf(SteadySound &steady, const Sound &sound)
{
    std::vector<std::int16_t> samples;
    for (const double sample : sound) {
        samples.push_back(static_cast<std::int16_t>(std::clamp(sample, -1.0, 1.0) * 32767));
    }
    constexpr std::size_t piece = 777;
    for (std::size_t at = 0; at < samples.size(); at += piece) {
        steady.add(std::span(samples).subspan(at, std::min(piece, samples.size() - at)));
    }
    return steady.share();
}

double shareOf(const Sound &sound)
{
    SteadySound steady;
    return shareOf(steady, sound);
}

} // namespace

TEST(SteadySound, chordsAreNearlyAllOfIt)
{
    EXPECT_GT(shareOf(chords(4, 0.1)), 0.75);
    EXPECT_GT(shareOf(chords(4, 0.1) + noise(4, 0.003)), 0.75);
    EXPECT_LE(shareOf(chords(4, 0.1)), 1.0);
}

TEST(SteadySound, aVoiceHasLittleOfIt)
{
    EXPECT_LT(shareOf(voice(4, 0.1)), 0.3);
}

TEST(SteadySound, neitherHasNoise)
{
    EXPECT_LT(shareOf(noise(4, 0.1)), 0.1);
}

TEST(SteadySound, aVoiceOverMusicIsAVoice)
{
    EXPECT_LT(shareOf(voice(4, 0.1) + chords(4, 0.05)), 0.6);
}

TEST(SteadySound, silenceAndHardlyAnythingAreNothing)
{
    EXPECT_EQ(shareOf({}), 0);
    EXPECT_EQ(shareOf(silence(2)), 0);
    EXPECT_EQ(shareOf(chords(0.1, 0.1)), 0);
}

TEST(SteadySound, beginsAnewWhenToldTo)
{
    SteadySound steady;
    EXPECT_GT(shareOf(steady, chords(4, 0.1)), 0.75);
    steady.reset();
    EXPECT_EQ(steady.share(), 0);
    EXPECT_LT(shareOf(steady, voice(4, 0.1)), 0.3);
}

} // namespace talmo::test
