#pragma once

#include "Platform/Desktop.h"
#include "Platform/Linux/Gnome/GnomeShell.h"

#include <memory>

namespace talmo {

/// Has the desktop's keys and focus come from the extension of GNOME Shell whenever that is there. The ports that the
/// desktop has now are used while it is not.
void useGnomeShell(Desktop &desktop, const std::shared_ptr<GnomeShell> &shell, const DesktopOptions &options);

} // namespace talmo
