#pragma once

#include <QtGlobal>

#include <optional>

namespace talmo {

/// A key going down or up, with the modifiers that it carries.
struct KeyEvent {
    quint16 keyCode = 0;
    bool isDown = false;
    quint64 flags = 0;
    bool operator==(const KeyEvent &) const = default;
};

/// Types for the user into whatever has the keyboard. Main thread; posting never waits.
class KeyEventPoster {
public:
    virtual ~KeyEventPoster() = default;

    /// None when no such event can be made.
    virtual std::optional<KeyEvent> makeKeyboardEvent(quint16 keyCode, bool isDown) = 0;
    virtual void post(const KeyEvent &event) = 0;
};

} // namespace talmo
