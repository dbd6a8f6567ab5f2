#include "Platform/Linux/Session/SessionBus.h"

#include <QByteArray>
#include <QtGlobal>

namespace talmo {

void keepFromStartingABus()
{
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        const QByteArray folder =
            qEnvironmentVariableIsSet("XDG_RUNTIME_DIR") ? qgetenv("XDG_RUNTIME_DIR") : "/nonexistent";
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + folder + "/bus");
    }
}

} // namespace talmo
