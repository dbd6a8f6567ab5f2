#include "accuracy/SoundFiles.h"

#include "Base/Error.h"

#include <QDir>
#include <QFileInfo>

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <random>
#include <vector>

namespace talmo::accuracy {

namespace {

struct Sound {
    int rate = sampleRate;
    std::vector<double> samples;
};

using File = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

Sound read(const QString &path, SF_INFO info)
{
    const File file(sf_open(path.toLocal8Bit().constData(), SFM_READ, &info), &sf_close);
    if (!file) {
        throw Error(path + QStringLiteral(": ") + QString::fromUtf8(sf_strerror(nullptr)));
    }
    std::vector<double> all(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_double(file.get(), all.data(), info.frames);
    Sound sound{info.samplerate, {}};
    for (std::size_t index = 0; index < all.size(); index += static_cast<std::size_t>(info.channels)) {
        sound.samples.push_back(all[index]);
    }
    return sound;
}

void write(const QString &path, const Sound &sound)
{
    QDir().mkpath(QFileInfo(path).path());
    SF_INFO info{};
    info.samplerate = sound.rate;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    const File file(sf_open(path.toLocal8Bit().constData(), SFM_WRITE, &info), &sf_close);
    if (!file) {
        throw Error(path + QStringLiteral(": ") + QString::fromUtf8(sf_strerror(nullptr)));
    }
    sf_writef_double(file.get(), sound.samples.data(), static_cast<sf_count_t>(sound.samples.size()));
}

/// The file of that name, created by `make` if missing.
QString once(const QString &folder, const QString &name, const std::function<Sound()> &make)
{
    const QString path = folder + QLatin1Char('/') + name + QStringLiteral(".wav");
    if (!QFileInfo::exists(path)) {
        write(path, make());
    }
    return path;
}

double power(const std::vector<double> &samples)
{
    double sum = 0;
    for (const double sample : samples) {
        sum += sample * sample;
    }
    return sum / static_cast<double>(std::max<std::size_t>(samples.size(), 1));
}

double factor(int decibels)
{
    return std::pow(10.0, decibels / 20.0);
}

void addNoise(Sound &sound, double amplitude)
{
    std::mt19937 generator(1);
    std::normal_distribution<double> noise(0, amplitude);
    for (double &sample : sound.samples) {
        sample = std::clamp(sample + noise(generator), -1.0, 1.0);
    }
}

/// Chords that change every second.
void addMusic(Sound &sound)
{
    constexpr double amplitude = 0.12;
    constexpr double bases[] = {220.0, 174.6, 261.6, 196.0};
    for (std::size_t index = 0; index < sound.samples.size(); ++index) {
        const double time = static_cast<double>(index) / sound.rate;
        const double base = bases[static_cast<std::size_t>(time) % std::size(bases)];
        const double decay = std::exp(-2 * (time - std::floor(time)));
        for (const double interval : {1.0, 1.26, 1.5, 2.0}) {
            sound.samples[index] += amplitude * decay * std::sin(2 * std::numbers::pi * base * interval * time);
        }
    }
}

} // namespace

QString fromRaw(const QString &file, const QString &folder)
{
    return once(folder, QFileInfo(file).baseName(), [&file] {
        SF_INFO info{};
        info.samplerate = sampleRate;
        info.channels = 1;
        info.format = SF_FORMAT_RAW | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE;
        return read(file, info);
    });
}

QString withNoise(const QString &file, int decibels, const QString &folder)
{
    return once(folder, QStringLiteral("%1-noise%2").arg(QFileInfo(file).baseName()).arg(decibels), [&] {
        Sound sound = read(file, {});
        addNoise(sound, std::sqrt(power(sound.samples)) * factor(-decibels));
        return sound;
    });
}

QString withGain(const QString &file, int decibels, const QString &folder)
{
    return once(folder, QStringLiteral("%1-gain%2").arg(QFileInfo(file).baseName()).arg(decibels), [&] {
        Sound sound = read(file, {});
        for (double &sample : sound.samples) {
            sample *= factor(decibels);
        }
        return sound;
    });
}

QString joined(const QStringList &files, int seconds, const QString &name, const QString &folder)
{
    return once(folder, QStringLiteral("%1-%2s").arg(name).arg(seconds), [&] {
        Sound all;
        for (const auto &file : files) {
            const Sound sound = read(file, {});
            all.rate = sound.rate;
            constexpr double audible = 0.01;
            const auto isAudible = [](double sample) { return std::abs(sample) > audible; };
            const auto begin = std::find_if(sound.samples.begin(), sound.samples.end(), isAudible);
            const auto end = std::find_if(sound.samples.rbegin(), sound.samples.rend(), isAudible).base();
            if (begin < end) {
                all.samples.insert(all.samples.end(), begin, end);
            }
        }
        const auto length = static_cast<std::size_t>(seconds) * static_cast<std::size_t>(all.rate);
        all.samples.resize(std::min(all.samples.size(), length));
        return all;
    });
}

QString wordless(Wordless kind, const QString &folder)
{
    constexpr std::size_t seconds = 60;
    const QString names[] = {QStringLiteral("silence"), QStringLiteral("noise"), QStringLiteral("music")};
    return once(folder, names[static_cast<int>(kind)], [kind] {
        Sound sound{sampleRate, std::vector<double>(sampleRate * seconds)};
        constexpr double loud = 0.03;
        constexpr double hardlyAnything = 0.0005; // Microphones are never quite silent.
        addNoise(sound, kind == Wordless::Noise ? loud : hardlyAnything);
        if (kind == Wordless::Music) {
            addMusic(sound);
        }
        return sound;
    });
}

std::vector<std::int16_t> samplesAt16kHz(const QString &file)
{
    const Sound sound = read(file, {});
    if (sound.rate != sampleRate) {
        throw Error(QStringLiteral("%1 has %2 samples a second, not %3.").arg(file).arg(sound.rate).arg(sampleRate));
    }
    constexpr double loudest = 32768;
    std::vector<std::int16_t> samples;
    samples.reserve(sound.samples.size());
    for (const double sample : sound.samples) {
        samples.push_back(static_cast<std::int16_t>(std::lround(sample * loudest)));
    }
    return samples;
}

} // namespace talmo::accuracy
