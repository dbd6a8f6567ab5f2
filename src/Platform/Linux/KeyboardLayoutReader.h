#pragma once

#include "Platform/Linux/PasteChord.h"
#include "Platform/Linux/XConnection.h"

namespace talmo {

/// The keyboard as it is this moment: three round trips.
KeyboardLayout readKeyboardLayout(XConnection &connection);

} // namespace talmo
