#include "Platform/Linux/X11/Keys/TriggerKeyCodes.h"

#include "Platform/Linux/Keys/TriggerKeys.h"

namespace talmo {

std::set<std::uint8_t> keyCodesOf(const KeyboardLayout &layout, xcb_keysym_t keySym)
{
    const auto width = static_cast<std::size_t>(layout.keySymsPerKeyCode);
    std::set<std::uint8_t> keyCodes;
    for (std::size_t index = 0; index < layout.keySyms.size(); ++index) {
        if (layout.keySyms[index] == keySym) {
            keyCodes.insert(static_cast<std::uint8_t>(layout.firstKeyCode + index / width));
        }
    }
    const auto kernelCode = functionKeyCode(keySym);
    if (keyCodes.empty() && kernelCode) {
        keyCodes.insert(static_cast<std::uint8_t>(*kernelCode + firstXKeyCode));
    }
    return keyCodes;
}

std::pair<xcb_keysym_t, xcb_keysym_t> symbolsOf(const KeyboardLayout &layout, std::uint8_t keyCode)
{
    const auto width = static_cast<std::size_t>(layout.keySymsPerKeyCode);
    const auto first = static_cast<std::size_t>(keyCode - layout.firstKeyCode) * width;
    if (width == 0 || first >= layout.keySyms.size()) {
        return {0, 0};
    }
    return {layout.keySyms[first], width > 1 ? layout.keySyms[first + 1] : 0};
}

} // namespace talmo
