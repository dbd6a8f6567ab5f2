#pragma once

#include "Platform/Desktop.h"
#include "Platform/Linux/Keys/ShellPaster.h"
#include "Platform/Linux/Wayland/WaylandSession.h"

#include <memory>

namespace talmo {

/// Replaces those ports of a desktop for which the compositor offers something that also works with Wayland windows.
/// What is missing then is in the desktop's limits. `paster`, if there is one, types where the compositor offers no
/// keyboard.
void useWayland(Desktop &desktop, const std::shared_ptr<WaylandSession> &session,
                const std::shared_ptr<ShellPaster> &paster, const DesktopOptions &options);

} // namespace talmo
