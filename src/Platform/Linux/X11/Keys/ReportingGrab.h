#pragma once

#include "Platform/Linux/X11/Keys/PasteShortcut.h"
#include "Platform/Linux/X11/XConnection.h"

#include <functional>

namespace talmo {

/// Takes one key from all other programs and reports its presses instead.
class ReportingGrab {
public:
    /// The connection outlives this.
    explicit ReportingGrab(XConnection &connection);

    /// With or without the modifiers that are held in this state of the keyboard. False if another program has grabbed
    /// the key alone.
    bool grab(const KeyboardLayout &layout, quint8 keyCode, std::function<void()> onPressed);
    void release();

    bool has(quint8 keyCode) const { return m_keyCode != 0 && m_keyCode == keyCode; }
    /// To be reported by the next reportPress().
    void notePress(quint8 keyCode) { m_wasPressed = m_wasPressed || has(keyCode); }
    void reportPress();

private:
    XConnection &m_connection;
    /// Zero if no key is grabbed.
    quint8 m_keyCode = 0;
    bool m_wasPressed = false;
    std::function<void()> m_onPressed;
};

} // namespace talmo
