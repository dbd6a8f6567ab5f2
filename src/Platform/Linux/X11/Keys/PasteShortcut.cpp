#include "Platform/Linux/X11/Keys/PasteShortcut.h"

#include <algorithm>
#include <array>

namespace talmo {

namespace {

constexpr xcb_keysym_t keySymV = 0x76;
constexpr xcb_keysym_t keySymInsert = 0xff63;

// Rows of the modifier map.
constexpr int shiftModifier = 0;
constexpr int controlModifier = 2;
/// Shift, Mod1, Mod3, Mod4 and Mod5: the modifiers that users hold. The locks are left as they are.
constexpr std::array heldModifiers = {0, 3, 5, 6, 7};

std::optional<std::uint8_t> keyCodeInColumn(const KeyboardLayout &layout, xcb_keysym_t keySym, int column)
{
    const auto width = static_cast<std::size_t>(layout.keySymsPerKeyCode);
    for (std::size_t row = 0; (row + 1) * width <= layout.keySyms.size(); ++row) {
        if (layout.keySyms[row * width + static_cast<std::size_t>(column)] == keySym) {
            return static_cast<std::uint8_t>(layout.firstKeyCode + row);
        }
    }
    return std::nullopt;
}

bool isHeld(const KeyboardLayout &layout, std::uint8_t keyCode)
{
    return std::find(layout.heldKeys.begin(), layout.heldKeys.end(), keyCode) != layout.heldKeys.end();
}

std::optional<std::uint8_t> modifierKey(const KeyboardLayout &layout, int modifier)
{
    const auto &keys = layout.modifierKeys[modifier];
    return keys.empty() ? std::nullopt : std::optional(keys.front());
}

void releaseHeld(const KeyboardLayout &layout, int modifier, std::vector<ChordKey> &chord)
{
    for (const auto keyCode : layout.modifierKeys[modifier]) {
        if (isHeld(layout, keyCode)) {
            chord.push_back({keyCode, false});
        }
    }
}

} // namespace

std::optional<std::uint8_t> keyCodeFor(const KeyboardLayout &layout, xcb_keysym_t keySym)
{
    // Two columns per layout: unshifted and shifted. The active layout comes first.
    const int groups = (layout.keySymsPerKeyCode + 1) / 2;
    if (layout.group < groups) {
        if (const auto keyCode = keyCodeInColumn(layout, keySym, layout.group * 2)) {
            return keyCode;
        }
    }
    for (int group = 0; group < groups; ++group) {
        if (const auto keyCode = keyCodeInColumn(layout, keySym, group * 2)) {
            return keyCode;
        }
    }
    return std::nullopt;
}

PasteStyle possibleStyle(const KeyboardLayout &layout, PasteStyle style)
{
    if (keyCodeFor(layout, keySymV)) {
        return style;
    }
    switch (style) {
    case PasteStyle::ControlV:
        return PasteStyle::ShiftInsert;
    case PasteStyle::ControlShiftV:
        return PasteStyle::ShiftInsertPrimary;
    case PasteStyle::ShiftInsert:
    case PasteStyle::ShiftInsertPrimary:
        break;
    }
    return style;
}

std::vector<ChordKey> pasteShortcut(const KeyboardLayout &layout, PasteStyle style)
{
    style = possibleStyle(layout, style);
    const bool takesInsert = style == PasteStyle::ShiftInsert || style == PasteStyle::ShiftInsertPrimary;
    const auto key = keyCodeFor(layout, takesInsert ? keySymInsert : keySymV);
    const auto shift = modifierKey(layout, shiftModifier);
    const auto control = modifierKey(layout, controlModifier);
    const bool needsShift = takesInsert || style == PasteStyle::ControlShiftV;
    if (!key || (needsShift && !shift) || (!takesInsert && !control)) {
        return {};
    }

    std::vector<ChordKey> chord;
    for (const int modifier : heldModifiers) {
        releaseHeld(layout, modifier, chord);
    }
    std::vector<std::uint8_t> modifiers;
    if (takesInsert) {
        releaseHeld(layout, controlModifier, chord);
    } else {
        modifiers.push_back(*control);
    }
    if (needsShift) {
        modifiers.push_back(*shift);
    }
    for (const auto modifier : modifiers) {
        chord.push_back({modifier, true});
    }
    chord.push_back({*key, true});
    chord.push_back({*key, false});
    for (auto modifier = modifiers.rbegin(); modifier != modifiers.rend(); ++modifier) {
        chord.push_back({*modifier, false});
    }
    return chord;
}

} // namespace talmo
