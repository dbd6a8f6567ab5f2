#pragma once

#include <QString>

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace talmo {

/// How a program wants to be asked to paste.
enum class PasteStyle {
    ControlV,
    /// Terminals: Ctrl+V belongs to the program that runs in them.
    ControlShiftV,
    /// Terminals of the old school, which paste the primary selection.
    ShiftInsertPrimary,
    /// Where Ctrl+V means something else and Shift+Insert takes the clipboard.
    ShiftInsert,
};

/// The style for a window by the two halves of its WM_CLASS; case does not matter.
PasteStyle pasteStyleFor(const QString &instanceName, const QString &className);

/// What a person presses to paste in this style, such as "Ctrl+V".
QString shortcutName(PasteStyle style);

/// Programs that copy the clipboard by themselves when it changes, into a machine or system of their own, and paste
/// that copy. By the two halves of WM_CLASS; case does not matter.
bool importsClipboard(const QString &instanceName, const QString &className);

/// What the chord needs to know of the keyboard.
struct KeyboardLayout {
    std::uint8_t firstKeyCode = 8;
    int keySymsPerKeyCode = 0;
    std::vector<xcb_keysym_t> keySyms;
    /// The layout in use, of those the keyboard has.
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

/// A key that types this letter without modifiers, in the layout in use or else in another one of the keyboard's
/// (programs look there too); none where no layout has it.
std::optional<std::uint8_t> keyCodeFor(const KeyboardLayout &layout, xcb_keysym_t keySym);

/// The keys to post, in order: held modifiers that would spoil the chord are let go first and not pressed again. A
/// style that needs a Latin V becomes Shift+Insert where the keyboard has none. Empty when it has no such key either.
std::vector<ChordKey> pasteChord(const KeyboardLayout &layout, PasteStyle style);

} // namespace talmo
