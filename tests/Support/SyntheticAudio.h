#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <span>
#include <vector>

namespace talmo::test {

inline constexpr int rate = 16000;

using Sound = std::vector<double>;

inline Sound silence(double seconds)
{
    return Sound(static_cast<std::size_t>(seconds * rate));
}

/// Chords of constant pitch that change every second.
inline Sound chords(double seconds, double amplitude)
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

/// A signal with a voice's harmonics, whose pitch varies as in a sentence.
inline Sound voice(double seconds, double amplitude)
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

inline Sound noise(double seconds, double amplitude)
{
    Sound sound = silence(seconds);
    std::minstd_rand generator;
    std::normal_distribution<double> normal(0, amplitude);
    for (auto &sample : sound) {
        sample = normal(generator);
    }
    return sound;
}

inline Sound operator+(Sound left, const Sound &right)
{
    for (std::size_t index = 0; index < left.size(); ++index) {
        left[index] += right[index];
    }
    return left;
}

inline std::vector<std::int16_t> samplesOf(const Sound &sound)
{
    std::vector<std::int16_t> samples;
    for (const double sample : sound) {
        samples.push_back(static_cast<std::int16_t>(std::clamp(sample, -1.0, 1.0) * 32767));
    }
    return samples;
}

/// Passes them on in pieces of 777 samples, unrelated to any block size.
template <typename Take>
void inPieces(const std::vector<std::int16_t> &samples, Take take)
{
    constexpr std::size_t piece = 777;
    for (std::size_t at = 0; at < samples.size(); at += piece) {
        take(std::span(samples).subspan(at, std::min(piece, samples.size() - at)));
    }
}

} // namespace talmo::test
