#pragma once

#include "Support/MadeSounds.h"

#include <QString>

#include <cmath>
#include <initializer_list>
#include <numbers>
#include <sndfile.h>
#include <vector>

namespace talmo::test {

/// Writes a sound file with `count` simultaneous tones around each of these frequencies (Hz): one second each, followed
/// by 1.5 s of silence. Many tones resemble noise, few a chord.
inline void writeTones(const QString &file, std::initializer_list<double> frequencies, int count = 24)
{
    std::vector<float> samples;
    for (const double frequency : frequencies) {
        for (int index = 0; index < rate * 5 / 2; ++index) {
            double sum = 0;
            for (int tone = 0; tone < count && index < rate; ++tone) {
                const double each = frequency * (0.35 + 1.3 * tone / count);
                sum += std::sin(2 * std::numbers::pi * each * index / rate + tone * tone);
            }
            samples.push_back(static_cast<float>(sum / count));
        }
    }
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE *out = sf_open(file.toLocal8Bit().constData(), SFM_WRITE, &info);
    sf_writef_float(out, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(out);
}

/// Copies a sound file, adding noise of that amplitude.
inline void writeWithNoise(const QString &from, const QString &to, double amplitude)
{
    SF_INFO info{};
    SNDFILE *in = sf_open(from.toLocal8Bit().constData(), SFM_READ, &info);
    Sound sound(static_cast<std::size_t>(info.frames));
    sf_read_double(in, sound.data(), info.frames);
    sf_close(in);
    const double secondsAndMore = 1 + static_cast<double>(sound.size()) / rate;
    sound = sound + noise(secondsAndMore, amplitude);
    SNDFILE *out = sf_open(to.toLocal8Bit().constData(), SFM_WRITE, &info);
    sf_write_double(out, sound.data(), static_cast<sf_count_t>(sound.size()));
    sf_close(out);
}

} // namespace talmo::test
