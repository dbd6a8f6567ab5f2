#pragma once

#include "Platform/Desktop.h"
#include "Platform/Linux/Keys/ShellPaster.h"
#include "Platform/Linux/Wayland/WaylandSession.h"

#include <memory>

namespace talmo {

/// What a desktop lends on request where its compositor offers nothing to every program.
struct LentPasting {
    /// Null if there is nothing to paste with that has to be asked for.
    std::shared_ptr<ShellPaster> paster;
    /// Null if the user cannot allow anything.
    std::shared_ptr<PastePermission> permission;
};

/// `better`: used while it is available; may be null. May wait for the portal for a second.
LentPasting openLentPasting(const WaylandSession &session, const std::shared_ptr<ShellPaster> &better,
                            const DesktopOptions &options);

/// Where the keys are unseen, takes them from the portal's global shortcuts, if it has some. May wait for the portal
/// for a second.
void usePortalKeys(Desktop &desktop, const DesktopOptions &options);

} // namespace talmo
