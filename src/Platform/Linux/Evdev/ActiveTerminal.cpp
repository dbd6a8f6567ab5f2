#include "Platform/Linux/Evdev/ActiveTerminal.h"

#include <QFile>

namespace talmo {

bool isOnActiveTerminal(const QString &activeFile)
{
    const QByteArray number = qgetenv("XDG_VTNR");
    QFile file(activeFile);
    return number.isEmpty() || !file.open(QFile::ReadOnly) || file.readAll().trimmed() == "tty" + number;
}

} // namespace talmo
