#pragma once

#include <QString>

namespace talmo::rig {

/// Speaks a text with one of flite's voices into a new file in the folder. Gives back the file's path; throws Error.
QString speak(const QString &text, const QString &folder, const QString &voice = QStringLiteral("slt"));

} // namespace talmo::rig
