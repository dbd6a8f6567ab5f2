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
    return openX11Pasting(wayland != nullptr);
}

} // namespace talmo
