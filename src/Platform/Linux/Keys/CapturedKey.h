#pragma once

#include "Input/Hotkey/HotkeyControl.h"

namespace talmo {

HotkeyControl::Key hotkeyOf(quint32 keySymbol);

/// What a pressed key is good for, by its own symbol and the one it has with Shift; zero for none.
HotkeyControl::Press capturedKey(int kernelCode, quint32 plain, quint32 shifted);

} // namespace talmo
