#pragma once

#include "Platform/Linux/Keys/ShellPaster.h"
#include "Platform/Pasting.h"

#include <memory>

namespace talmo {

/// Throws Error if the X server cannot be reached. `isNested`: see XSession::open(). `shell`: see XTestKeyEventPoster.
Pasting openX11Pasting(bool isNested, const std::shared_ptr<ShellPaster> &shell);

} // namespace talmo
