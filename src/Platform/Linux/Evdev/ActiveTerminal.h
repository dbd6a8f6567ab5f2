#pragma once

#include <QString>

namespace talmo {

/// Whether this session's virtual terminal is the one on the screen; true if that cannot be told. Another user may sit
/// at the keyboard otherwise. Reads a file of the kernel's that never blocks.
bool isOnActiveTerminal(const QString &activeFile = QStringLiteral("/sys/class/tty/tty0/active"));

} // namespace talmo
