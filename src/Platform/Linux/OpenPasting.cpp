#include "Base/Error.h"
#include "Base/Log.h"
#include "Platform/Linux/Gnome/GnomeFocusedField.h"
#include "Platform/Linux/Gnome/GnomeShell.h"
#include "Platform/Linux/Wayland/Clipboard/DataControl.h"
#include "Platform/Linux/Wayland/WaylandCheck.h"
#include "Platform/Linux/Wayland/WaylandLimits.h"
#include "Platform/Linux/Wayland/WaylandPasting.h"
#include "Platform/Linux/X11/X11Check.h"
#include "Platform/Linux/X11/X11Pasting.h"
#include "Platform/Pasting.h"

namespace talmo {

namespace {

/// If there is no X server beside the Wayland compositor, its absence is not what to report to the user.
Pasting openX11PastingOnWayland(const std::shared_ptr<GnomeShell> &gnome)
{
    try {
        return openX11Pasting(true, gnome);
    } catch (const Error &error) {
        generalLog().info("pasting by X: %@", {error.localizedDescription()});
    }
    throw Error(QString::fromUtf8(WaylandLimits::untypedText.sentence));
}

} // namespace

Pasting openPasting()
{
    const auto wayland = WaylandSession::open();
    if (wayland && !DataControl::offeredInterface(*wayland).isEmpty()) {
        return openWaylandPasting(wayland);
    }
    const auto gnome = wayland ? GnomeShell::open(GnomeShell::NameWait::GiveUp) : nullptr;
    auto pasting = wayland ? openX11PastingOnWayland(gnome) : openX11Pasting(false, nullptr);
    if (gnome) {
        pasting.focusedField = std::make_shared<GnomeFocusedField>(gnome, pasting.focusedField);
        pasting.shutDown = [gnome, shutDown = pasting.shutDown] {
            gnome->releaseName(); // This program may stay for as long as the clipboard needs it.
            return shutDown();
        };
    }
    return pasting;
}

QList<CheckResult> checkDesktop(const DesktopCheckOptions &options)
{
    auto results = checkX11(options);
    if (const auto wayland = WaylandSession::open()) {
        const auto gnome = GnomeShell::open(GnomeShell::NameWait::GiveUp);
        checkWayland(results, *wayland, options, gnome && gnome->isAvailable());
    }
    return results;
}

} // namespace talmo
