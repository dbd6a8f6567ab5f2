#pragma once

#include "Platform/Linux/X11/Keys/PasteShortcut.h"

#include <cstdint>
#include <set>
#include <utility>

namespace talmo {

/// X servers on Linux number the keys as the kernel does, from here on.
inline constexpr int firstXKeyCode = 8;

/// The keys that have this symbol at all; for F13 to F24 also if the layout gives them another one.
std::set<std::uint8_t> keyCodesOf(const KeyboardLayout &layout, xcb_keysym_t keySym);

/// The symbols of a key without and with Shift; zero for none.
std::pair<xcb_keysym_t, xcb_keysym_t> symbolsOf(const KeyboardLayout &layout, std::uint8_t keyCode);

} // namespace talmo
