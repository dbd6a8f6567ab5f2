#pragma once

#include <QString>

namespace talmo {

/// Has the desktop show a notification, where it has such a service. Never waits; any thread.
void showDesktopNotice(const QString &text);

} // namespace talmo
