#pragma once

#include "Platform/DesktopCheck.h"
#include "Platform/Linux/Wayland/WaylandSession.h"

namespace talmo {

/// Replaces the results of checkX11() that do not apply to Wayland windows. `hasShell`: GNOME's extension sees the key
/// and pastes.
void checkWayland(QList<CheckResult> &results, const WaylandSession &session, const DesktopCheckOptions &options,
                  bool hasShell);

} // namespace talmo
