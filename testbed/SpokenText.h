#pragma once

#include <QString>

namespace talmo::testbed {

/// Speaks a text into a file in the folder, unless it is there from before. `voice`: one of flite's, or one of
/// festival's behind "festival:". Gives back the file's path; throws Error.
QString speak(const QString &text, const QString &folder, const QString &voice = QStringLiteral("slt"));

} // namespace talmo::testbed
