#pragma once

#include "Insertion/PasteStyle.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace talmo {

/// The state of the keyboard that a paste shortcut depends on.
struct KeyboardLayout {
    std::uint8_t firstKeyCode = 8;
    int keySymsPerKeyCode = 0;
    std::vector<xcb_keysym_t> keySyms;
    /// The index of the active layout.
    int group = 0;
    /// Key codes of every modifier, by the eight modifiers of the protocol.
    std::vector<std::uint8_t> modifierKeys[8];
    std::vector<std::uint8_t> heldKeys;
};

struct ChordKey {
    std::uint8_t keyCode = 0;
    bool isDown = false;
    bool operator==(const ChordKey &) const = default;
};

/// A key that types this letter without modifiers, in the active layout or else in another layout of the keyboard
/// (programs look there too); none if no layout has it.
std::optional<std::uint8_t> keyCodeFor(const KeyboardLayout &layout, xcb_keysym_t keySym);

/// The style that pastes on this keyboard: without a Latin V, the styles that need one become Shift+Insert, which in
/// terminals pastes the primary selection.
PasteStyle possibleStyle(const KeyboardLayout &layout, PasteStyle style);

/// The keys to post, in order. Held modifiers that would interfere are released first and not pressed again. A style
/// that needs a Latin V falls back to Shift+Insert if the keyboard has none. Empty if it lacks that key too.
std::vector<ChordKey> pasteShortcut(const KeyboardLayout &layout, PasteStyle style);

} // namespace talmo
