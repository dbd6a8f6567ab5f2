#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"

#include "Platform/Linux/Wayland/Keys/FakeInput.h"
#include "Platform/Linux/Wayland/Keys/VirtualKeyboard.h"

#include <linux/input-event-codes.h>

namespace talmo {

std::vector<quint32> ChordKeyboard::keysOf(PasteStyle style)
{
    switch (style) {
    case PasteStyle::ControlShiftV:
        return {KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_V};
    case PasteStyle::ShiftInsertPrimary:
    case PasteStyle::ShiftInsert:
        return {KEY_LEFTSHIFT, KEY_INSERT};
    case PasteStyle::ControlV:
        break;
    }
    return {KEY_LEFTCTRL, KEY_V};
}

bool ChordKeyboard::isOffered(const WaylandSession &session)
{
    return VirtualKeyboard::isOffered(session) || FakeInput::isOffered(session);
}

std::unique_ptr<ChordKeyboard> ChordKeyboard::open(WaylandSession &session)
{
    if (auto keyboard = VirtualKeyboard::open(session)) {
        return keyboard;
    }
    return FakeInput::open(session);
}

} // namespace talmo
