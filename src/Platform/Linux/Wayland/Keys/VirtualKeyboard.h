#pragma once

#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"
#include "Platform/Linux/Wayland/WaylandSession.h"

#include <virtual-keyboard.h>

#include <xkbcommon/xkbcommon.h>

namespace talmo {

/// A keyboard of Talmo's own, with a keymap of its own: what the user's keyboard has under V does not matter. It exists
/// as long as Talmo does, because a keyboard that comes and goes makes some programs lose a key.
class VirtualKeyboard final : public ChordKeyboard {
public:
    /// Whether the compositor lets Talmo use it. Any thread.
    static bool isOffered(const WaylandSession &session);
    /// Null if the compositor does not offer virtual keyboards.
    static std::unique_ptr<VirtualKeyboard> open(WaylandSession &session);
    ~VirtualKeyboard() override;
    VirtualKeyboard(const VirtualKeyboard &) = delete;
    VirtualKeyboard &operator=(const VirtualKeyboard &) = delete;

    void post(const std::vector<quint32> &keys) override;

    void sendKey(quint32 key, bool isDown);

private:
    explicit VirtualKeyboard(WaylandSession &session);
    bool loadKeymap();

    WaylandSession &m_session;
    zwp_virtual_keyboard_manager_v1 *m_manager;
    zwp_virtual_keyboard_v1 *m_keyboard = nullptr;
    xkb_context *m_context = nullptr;
    xkb_keymap *m_keymap = nullptr;
    xkb_state *m_state = nullptr;
};

} // namespace talmo
