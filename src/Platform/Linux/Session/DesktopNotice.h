#pragma once

#include <QString>

namespace talmo {

/// Shows a desktop notification, if a notification service is running. Never blocks; any thread.
void showDesktopNotice(const QString &text);

} // namespace talmo
