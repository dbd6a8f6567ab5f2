#pragma once

#include "Platform/Desktop.h"
#include "Platform/Linux/Keys/ShellPaster.h"

#include <memory>

namespace talmo {

/// Throws Error if there is no X server; Qt would only end the process, without a helpful message.
void requireX11();

/// Throws Error if the X server cannot be reached. `isNested`: see XSession::open(). `shell`: see XTestKeyEventPoster.
Desktop openX11Desktop(const DesktopOptions &options, bool isNested = false,
                       const std::shared_ptr<ShellPaster> &shell = nullptr);

} // namespace talmo
