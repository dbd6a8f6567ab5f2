#include "Base/Error.h"
#include "Base/Log.h"
#include "Platform/Desktop.h"
#include "Platform/Linux/Gnome/GnomeDesktop.h"
#include "Platform/Linux/Wayland/Portal/PortalDesktop.h"
#include "Platform/Linux/Wayland/WaylandDesktop.h"
#include "Platform/Linux/X11/X11Desktop.h"

#include <QByteArray>

namespace talmo {

/// Talmo's windows are those of an X program, on Wayland too: only there can they be placed, and be menus that take no
/// focus.
void prepareDesktop()
{
    try {
        requireX11();
    } catch (const Error &) {
        if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
            throw;
        }
        throw Error(QStringLiteral("Talmo's windows need XWayland, which this session lacks. Enable XWayland, then "
                                   "start Talmo again."));
    }
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.startsWith("wayland")) {
        generalLog().info("Talmo's windows need X; QT_QPA_PLATFORM=%s is ignored", {QString::fromUtf8(platform)});
    }
    if (platform.isEmpty() || platform.startsWith("wayland")) {
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
}

Desktop openDesktop(const DesktopOptions &options)
{
    const auto wayland = WaylandSession::open();
    const auto gnome = wayland ? GnomeShell::open(GnomeShell::NameWait::Queue) : nullptr;
    const auto lent = wayland ? openLentPasting(*wayland, gnome, options) : LentPasting();
    Desktop desktop = openX11Desktop(options, wayland != nullptr, lent.paster);
    desktop.pastePermission = lent.permission;
    if (wayland) {
        useWayland(desktop, wayland, lent.paster, options);
        if (!gnome || !gnome->isAvailable()) {
            usePortalKeys(desktop, options);
        }
    }
    if (gnome) {
        useGnomeShell(desktop, gnome, options);
    }
    for (const auto &limit : desktop.limits) {
        generalLog().info("%s: %s", {QString::fromUtf8(limit.name), QString::fromUtf8(limit.sentence)});
    }
    return desktop;
}

} // namespace talmo
