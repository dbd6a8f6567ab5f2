#pragma once

#include <QString>

namespace talmo::testbed {

/// Speaks a text into a file in the folder, unless the file exists. `voice`: a flite voice, or a festival voice after
/// "festival:". Returns the file's path; throws Error.
QString speak(const QString &text, const QString &folder, const QString &voice = QStringLiteral("slt"));

} // namespace talmo::testbed
