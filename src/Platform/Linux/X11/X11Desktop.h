#pragma once

#include "Platform/Desktop.h"

namespace talmo {

/// Throws Error if there is no X server; Qt would only end the process, without a helpful message.
void requireX11();

/// Throws Error if the X server cannot be reached. `isNested`: see XSession::open().
Desktop openX11Desktop(const DesktopOptions &options, bool isNested = false);

} // namespace talmo
