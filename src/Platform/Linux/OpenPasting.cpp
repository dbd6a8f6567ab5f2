#include "Platform/Linux/Gnome/GnomeFocusedField.h"
#include "Platform/Linux/Gnome/GnomeShell.h"
#include "Platform/Linux/Wayland/Clipboard/DataControl.h"
#include "Platform/Linux/Wayland/WaylandPasting.h"
#include "Platform/Linux/X11/X11Pasting.h"
#include "Platform/Pasting.h"

namespace talmo {

Pasting openPasting()
{
    const auto wayland = WaylandSession::open();
    if (wayland && !DataControl::offeredInterface(*wayland).isEmpty()) {
        return openWaylandPasting(wayland);
    }
    const auto gnome = wayland ? GnomeShell::open(GnomeShell::NameWait::GiveUp) : nullptr;
    auto pasting = openX11Pasting(wayland != nullptr, gnome);
    if (gnome) {
        pasting.focusedField = std::make_shared<GnomeFocusedField>(gnome, pasting.focusedField);
        pasting.shutDown = [gnome, shutDown = pasting.shutDown] {
            gnome->releaseName(); // This program may stay for as long as the clipboard needs it.
            return shutDown();
        };
    }
    return pasting;
}

} // namespace talmo
