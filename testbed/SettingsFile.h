#pragma once

#include <QJsonObject>
#include <QString>

namespace talmo::testbed {

/// Replaces the settings of any Talmo whose configuration is in the desktop's folder. The welcome counts as shown
/// unless they say otherwise: it would take the focus from the window dictated into. Throws Error.
void writeTalmoSettings(const QString &desktopFolder, QJsonObject settings);

} // namespace talmo::testbed
