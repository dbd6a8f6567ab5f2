#include "Platform/Linux/Keys/CapturedKey.h"

#include "Platform/Linux/Keys/TriggerKeys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace talmo {

HotkeyControl::Key hotkeyOf(quint32 keySymbol)
{
    return {keyName(keySymbol), keyDisplayName(keySymbol)};
}

HotkeyControl::Press capturedKey(int kernelCode, quint32 plain, quint32 shifted)
{
    using Kind = HotkeyControl::Press::Kind;
    if (const auto function = functionKeySymbol(kernelCode)) {
        return {Kind::Usable, hotkeyOf(*function)};
    }
    if (plain == XKB_KEY_Escape) {
        return {Kind::Cancelled, hotkeyOf(plain)};
    }
    if (plain == 0) {
        return {Kind::Nameless, {}};
    }
    // The keys of the number pad type only with Num Lock.
    return {producesText(plain) || producesText(shifted) ? Kind::Typing : Kind::Usable, hotkeyOf(plain)};
}

} // namespace talmo
