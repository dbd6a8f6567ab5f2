#include "Platform/Linux/Wayland/Keys/VirtualKeyboard.h"

#include "Base/Log.h"
#include "Platform/Linux/System/FileDescriptor.h"

#include <chrono>
#include <cstdlib>
#include <cstring>

#include <sys/mman.h>

namespace talmo {

namespace {

quint32 timestamp()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<quint32>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

} // namespace

bool VirtualKeyboard::isOffered(const WaylandSession &session)
{
    return session.offeredVersion(zwp_virtual_keyboard_manager_v1_interface.name) > 0 && session.seat() != nullptr;
}

std::unique_ptr<VirtualKeyboard> VirtualKeyboard::open(WaylandSession &session)
{
    if (!isOffered(session)) {
        return nullptr;
    }
    std::unique_ptr<VirtualKeyboard> keyboard(new VirtualKeyboard(session));
    return keyboard->loadKeymap() ? std::move(keyboard) : nullptr;
}

VirtualKeyboard::VirtualKeyboard(WaylandSession &session)
    : m_session(session),
      m_manager(session.bind<zwp_virtual_keyboard_manager_v1>(zwp_virtual_keyboard_manager_v1_interface, 1)),
      m_keyboard(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(m_manager, session.seat()))
{
}

VirtualKeyboard::~VirtualKeyboard()
{
    zwp_virtual_keyboard_v1_destroy(m_keyboard);
    zwp_virtual_keyboard_manager_v1_destroy(m_manager);
    xkb_state_unref(m_state);
    xkb_keymap_unref(m_keymap);
    xkb_context_unref(m_context);
    m_session.flush();
}

bool VirtualKeyboard::loadKeymap()
{
    m_context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_rule_names names{};
    names.rules = "evdev";
    names.model = "pc105";
    names.layout = "us";
    m_keymap =
        m_context != nullptr ? xkb_keymap_new_from_names(m_context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS) : nullptr;
    m_state = m_keymap != nullptr ? xkb_state_new(m_keymap) : nullptr;
    if (m_state == nullptr) {
        generalLog().error("the keymap of the virtual keyboard could not be made");
        return false;
    }
    const std::unique_ptr<char, decltype(&std::free)> text(
        xkb_keymap_get_as_string(m_keymap, XKB_KEYMAP_FORMAT_TEXT_V1), &std::free);
    const auto size = std::strlen(text.get()) + 1;
    const FileDescriptor file(memfd_create("talmo-keymap", MFD_CLOEXEC));
    if (!file || write(file.get(), text.get(), size) != static_cast<ssize_t>(size)) {
        generalLog().error("the keymap of the virtual keyboard could not be written");
        return false;
    }
    zwp_virtual_keyboard_v1_keymap(m_keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.get(),
                                   static_cast<quint32>(size));
    m_session.flush();
    return true;
}

void VirtualKeyboard::post(const std::vector<quint32> &keys)
{
    for (const auto key : keys) {
        sendKey(key, true);
    }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        sendKey(*key, false);
    }
}

void VirtualKeyboard::sendKey(quint32 key, bool isDown)
{
    constexpr quint32 firstKeyCode = 8; // X and its keymaps count from 8.
    zwp_virtual_keyboard_v1_key(m_keyboard, timestamp(), key,
                                isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    const auto direction = isDown ? XKB_KEY_DOWN : XKB_KEY_UP;
    const auto changed = xkb_state_update_key(m_state, key + firstKeyCode, direction);
    if ((changed & XKB_STATE_MODS_EFFECTIVE) != 0) {
        zwp_virtual_keyboard_v1_modifiers(m_keyboard, xkb_state_serialize_mods(m_state, XKB_STATE_MODS_DEPRESSED), 0, 0,
                                          0);
    }
}

} // namespace talmo
