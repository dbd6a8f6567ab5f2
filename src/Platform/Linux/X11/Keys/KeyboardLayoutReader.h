#pragma once

#include "Platform/Linux/X11/Keys/PasteShortcut.h"
#include "Platform/Linux/X11/XConnection.h"

namespace talmo {

/// The keyboard's current layout, modifiers and held keys. Costs three round trips.
KeyboardLayout readKeyboardLayout(XConnection &connection);

} // namespace talmo
