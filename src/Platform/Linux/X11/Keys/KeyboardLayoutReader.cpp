#include "Platform/Linux/X11/Keys/KeyboardLayoutReader.h"

namespace talmo {

namespace {

void readKeySyms(XConnection &connection, KeyboardLayout &layout)
{
    const auto *setup = xcb_get_setup(connection.get());
    const auto count = static_cast<quint8>(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_get_keyboard_mapping(connection.get(), setup->min_keycode, count);
    const XcbPtr<xcb_get_keyboard_mapping_reply_t> reply(
        xcb_get_keyboard_mapping_reply(connection.get(), cookie, nullptr));
    layout.firstKeyCode = setup->min_keycode;
    if (reply) {
        const auto *keySyms = xcb_get_keyboard_mapping_keysyms(reply.get());
        layout.keySymsPerKeyCode = reply->keysyms_per_keycode;
        layout.keySyms.assign(keySyms, keySyms + xcb_get_keyboard_mapping_keysyms_length(reply.get()));
    }
}

void readModifiers(XConnection &connection, KeyboardLayout &layout)
{
    const XcbPtr<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(connection.get(), xcb_get_modifier_mapping(connection.get()), nullptr));
    if (!reply) {
        return;
    }
    const auto *keyCodes = xcb_get_modifier_mapping_keycodes(reply.get());
    constexpr std::size_t modifierCount = 8;
    for (std::size_t modifier = 0; modifier < modifierCount; ++modifier) {
        for (std::size_t index = 0; index < reply->keycodes_per_modifier; ++index) {
            const auto keyCode = keyCodes[modifier * reply->keycodes_per_modifier + index];
            if (keyCode != 0) {
                layout.modifierKeys[modifier].push_back(keyCode);
            }
        }
    }
}

void readHeldKeys(XConnection &connection, KeyboardLayout &layout)
{
    const XcbPtr<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection.get(), xcb_query_keymap(connection.get()), nullptr));
    constexpr unsigned keyCodeCount = 256;
    for (unsigned keyCode = 0; reply && keyCode < keyCodeCount; ++keyCode) {
        if ((reply->keys[keyCode / 8] >> (keyCode % 8) & 1) != 0) {
            layout.heldKeys.push_back(static_cast<quint8>(keyCode));
        }
    }
}

void readGroup(XConnection &connection, KeyboardLayout &layout)
{
    const auto cookie = xcb_query_pointer(connection.get(), connection.root());
    const XcbPtr<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(connection.get(), cookie, nullptr));
    if (reply) {
        // The server puts the active layout into the two bits above the buttons.
        layout.group = reply->mask >> 13 & 3;
    }
}

} // namespace

KeyboardLayout readKeyboardLayout(XConnection &connection)
{
    KeyboardLayout layout;
    readKeySyms(connection, layout);
    readModifiers(connection, layout);
    readHeldKeys(connection, layout);
    readGroup(connection, layout);
    return layout;
}

} // namespace talmo
