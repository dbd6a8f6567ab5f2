#pragma once

#include "Platform/Linux/Wayland/WaylandSession.h"
#include "Platform/Pasting.h"

#include <memory>

namespace talmo {

/// The ports with which to paste in this session. Call only if the compositor offers data control.
Pasting openWaylandPasting(const std::shared_ptr<WaylandSession> &session);

} // namespace talmo
