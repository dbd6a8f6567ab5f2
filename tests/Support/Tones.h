#pragma once

#include "Support/SyntheticAudio.h"

#include <QString>

#include <cmath>
#include <initializer_list>
#include <numbers>
#include <sndfile.h>
#include <vector>

namespace talmo::test {

/// `count` simultaneous tones around a frequency (Hz). Many tones resemble noise, few a chord.
inline Sound tones(double frequency, double seconds, int count = 24)
{
    Sound sound = silence(seconds);
    for (std::size_t index = 0; index < sound.size(); ++index) {
        for (int tone = 0; tone < count; ++tone) {
            const double each = frequency * (0.35 + 1.3 * tone / count);
            sound[index] +=
                std::sin(2 * std::numbers::pi * each * static_cast<double>(index) / rate + tone * tone) / count;
        }
    }
    return sound;
}

/// One sound after the other.
inline Sound joined(std::initializer_list<Sound> sounds)
{
    Sound all;
    for (const auto &sound : sounds) {
        all.insert(all.end(), sound.begin(), sound.end());
    }
    return all;
}

/// Writes a sound file with tones around each of these frequencies: one second each, followed by 1.5 s of silence.
inline void writeTones(const QString &file, std::initializer_list<double> frequencies, int count = 24)
{
    std::vector<float> samples;
    for (const double frequency : frequencies) {
        for (const double sample : joined({tones(frequency, 1, count), silence(1.5)})) {
            samples.push_back(static_cast<float>(sample));
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

/// The content of a sound file of one channel at that rate.
inline Sound soundOf(const QString &file)
{
    SF_INFO info{};
    SNDFILE *in = sf_open(file.toLocal8Bit().constData(), SFM_READ, &info);
    Sound sound(static_cast<std::size_t>(info.frames));
    sf_read_double(in, sound.data(), info.frames);
    sf_close(in);
    return sound;
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
