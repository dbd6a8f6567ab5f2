#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace talmo::accuracy {

/// Each creates a sound file in the folder, unless it exists, and returns its path. Throws Error.

/// From a file without a header: 16 kHz, one channel.
QString fromRaw(const QString &file, const QString &folder);
/// Adds white noise, this many decibels below the speech.
QString withNoise(const QString &file, int decibels, const QString &folder);
/// Louder (positive) or softer (negative) by this many decibels.
QString withGain(const QString &file, int decibels, const QString &folder);
/// Speech without a pause, cut off after this many seconds.
QString joined(const QStringList &files, int seconds, const QString &name, const QString &folder);
/// A minute without speech.
enum class Wordless { Silence, Noise, Music };
QString wordless(Wordless kind, const QString &folder);

constexpr int sampleRate = 16000;
/// The first channel of a sound file that must have this rate. Throws Error.
std::vector<std::int16_t> samplesAt16kHz(const QString &file);

} // namespace talmo::accuracy
