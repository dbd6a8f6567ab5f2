#include "Platform/Desktop.h"
#include "Platform/Linux/X11/X11Desktop.h"

#include <QByteArray>

namespace talmo {

void prepareDesktop()
{
    requireX11();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
}

Desktop openDesktop(const DesktopOptions &options)
{
    return openX11Desktop(options);
}

} // namespace talmo
