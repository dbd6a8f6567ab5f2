#pragma once

#include "Platform/Desktop.h"
#include "Platform/Linux/Gnome/GnomeShell.h"

#include <memory>

namespace talmo {

/// Takes keys and focus from the GNOME Shell extension whenever it is running. The ports that the desktop has now are
/// used while it is not.
void useGnomeShell(Desktop &desktop, const std::shared_ptr<GnomeShell> &shell, const DesktopOptions &options);

} // namespace talmo
