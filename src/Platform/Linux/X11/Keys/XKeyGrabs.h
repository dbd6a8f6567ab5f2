#pragma once

#include "Platform/Linux/X11/Keys/PasteShortcut.h"
#include "Platform/Linux/X11/XConnection.h"

#include <cstdint>
#include <set>

namespace talmo {

/// Caps Lock and, by convention, Num Lock: on or off, they make no difference to a key.
inline constexpr unsigned lockModifiers = XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2;

/// A grab is for one exact set of modifiers. Those held now belong to the trigger key and may be released while the
/// grab lasts; the locks may be on or off. Others are left to the window manager, such as Alt+Escape.
std::set<quint16> modifiersToGrab(const KeyboardLayout &layout);

/// Keeps keys from all other programs while they are pressed without a modifier, and has the connection receive their
/// XInput events. With a modifier they are shortcuts of those programs' own, and stay theirs.
class XKeyGrabs {
public:
    /// The connection outlives this.
    explicit XKeyGrabs(XConnection &connection);

    /// Replaces the keys. Waits for the server's answer.
    void set(const std::set<std::uint8_t> &keyCodes);

    bool has(std::uint8_t keyCode) const { return m_grabbed.contains(keyCode); }
    /// Those that another program has taken already.
    const std::set<std::uint8_t> &refused() const { return m_refused; }
    /// Whether the server would grant the key.
    bool isFree(std::uint8_t keyCode);

private:
    bool isTaken(std::uint8_t keyCode);
    bool grab(std::uint8_t keyCode);
    void ungrab(std::uint8_t keyCode);

    XConnection &m_connection;
    std::set<std::uint8_t> m_grabbed;
    std::set<std::uint8_t> m_refused;
};

} // namespace talmo
