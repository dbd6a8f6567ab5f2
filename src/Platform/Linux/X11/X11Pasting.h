#pragma once

#include "Platform/Pasting.h"

namespace talmo {

/// Throws Error if the X server cannot be reached. `isNested`: see XSession::open().
Pasting openX11Pasting(bool isNested);

} // namespace talmo
