#pragma once

#include "Platform/Linux/X11/Keys/PasteChord.h"
#include "Platform/Linux/X11/XConnection.h"

namespace talmo {

/// The keyboard as it is this moment: three round trips.
KeyboardLayout readKeyboardLayout(XConnection &connection);

} // namespace talmo
