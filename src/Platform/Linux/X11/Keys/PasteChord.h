#pragma once

#include <QString>

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace talmo {

/// The shortcut by which a program pastes.
enum class PasteStyle {
    ControlV,
    /// Terminals: Ctrl+V belongs to the program that runs in them.
    ControlShiftV,
    /// Older terminals, which paste the primary selection.
    ShiftInsertPrimary,
    /// Programs in which Ctrl+V means something else and Shift+Insert pastes the clipboard.
    ShiftInsert,
};

/// The style for a window by the two parts of its WM_CLASS, case-insensitive.
PasteStyle pasteStyleFor(const QString &instanceName, const QString &className);

/// The user's shortcut for this style, such as "Ctrl+V".
QString shortcutName(PasteStyle style);

/// Whether a program copies the clipboard on its own whenever it changes, into a machine or system of its own, and
/// pastes that copy. By the two parts of WM_CLASS, case-insensitive.
bool importsClipboard(const QString &instanceName, const QString &className);

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

/// The keys to post, in order. Held modifiers that would interfere are released first and not pressed again. A style
/// that needs a Latin V falls back to Shift+Insert if the keyboard has none. Empty if it lacks that key too.
std::vector<ChordKey> pasteChord(const KeyboardLayout &layout, PasteStyle style);

} // namespace talmo
