#pragma once

#include <QString>
#include <QStringList>

namespace talmo::accuracy {

/// Each makes a new sound file in the folder, unless it is there from before, and gives back its path. Throws Error.

/// 16 kHz, one channel, from a file without a header.
QString fromRaw(const QString &file, const QString &folder);
/// White noise under it, so many decibels below the speech.
QString withNoise(const QString &file, int decibels, const QString &folder);
/// Louder or softer by so many decibels.
QString withGain(const QString &file, int decibels, const QString &folder);
/// Speech without a pause, cut off after so many seconds.
QString joined(const QStringList &files, int seconds, const QString &name, const QString &folder);
/// A minute in which nobody speaks.
enum class Wordless { Silence, Noise, Music };
QString wordless(Wordless kind, const QString &folder);

} // namespace talmo::accuracy
