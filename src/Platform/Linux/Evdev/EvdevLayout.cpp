#include "Platform/Linux/Evdev/EvdevLayout.h"

#include "Platform/Linux/Keys/TriggerKeys.h"

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace talmo {

namespace {

/// The offset of XKB's key codes from the kernel's.
constexpr quint32 firstXkbCode = 8;

} // namespace

void EvdevLayout::Unref::operator()(xkb_keymap *keymap) const
{
    xkb_keymap_unref(keymap);
}

EvdevLayout::EvdevLayout()
{
    auto *context = xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES);
    const xkb_rule_names names{"evdev", "pc105", "us", "", ""};
    m_keymap.reset(xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    xkb_context_unref(context);
}

EvdevLayout::~EvdevLayout() = default;

quint32 EvdevLayout::symbolOf(quint32 xkbCode, quint32 level) const
{
    const xkb_keysym_t *symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), xkbCode, 0, level, &symbols);
    return count > 0 ? *symbols : 0;
}

std::set<int> EvdevLayout::codesOf(quint32 keySymbol) const
{
    if (const auto function = functionKeyCode(keySymbol)) {
        return {*function};
    }
    if (keySymbol == XKB_KEY_ISO_Level3_Shift) {
        return {KEY_RIGHTALT};
    }
    std::set<int> codes;
    if (keySymbol == XKB_KEY_XF86WakeUp) {
        codes.insert(KEY_FN); // X has no code for it.
    }
    if (m_keymap) {
        for (auto code = xkb_keymap_min_keycode(m_keymap.get()); code <= xkb_keymap_max_keycode(m_keymap.get());
             ++code) {
            if (code >= firstXkbCode && symbolOf(code, 0) == keySymbol) {
                codes.insert(static_cast<int>(code - firstXkbCode));
            }
        }
    }
    return codes;
}

std::pair<quint32, quint32> EvdevLayout::symbolsOf(int code) const
{
    if (code == KEY_FN) {
        return {XKB_KEY_XF86WakeUp, 0};
    }
    const auto xkbCode = static_cast<quint32>(code) + firstXkbCode;
    return m_keymap ? std::pair(symbolOf(xkbCode, 0), symbolOf(xkbCode, 1)) : std::pair<quint32, quint32>();
}

} // namespace talmo
