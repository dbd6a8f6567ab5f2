#pragma once

#include "Input/Hotkey/HotkeyControl.h"

namespace talmo {

HotkeyControl::Key hotkeyOf(quint32 keySymbol);

/// Whether a pressed key can be a trigger key, given its symbols without and with Shift; zero for none.
HotkeyControl::Press capturedKey(int kernelCode, quint32 plain, quint32 shifted);

} // namespace talmo
