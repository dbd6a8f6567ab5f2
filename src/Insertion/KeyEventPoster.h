#pragma once

#include <QtGlobal>

#include <optional>

namespace talmo {

/// A key press or release, with its modifiers.
struct KeyEvent {
    quint16 keyCode = 0;
    bool isDown = false;
    quint64 flags = 0;
    bool operator==(const KeyEvent &) const = default;
};

/// Synthesises key events for whatever has keyboard focus. Main thread; posting never blocks.
class KeyEventPoster {
public:
    virtual ~KeyEventPoster() = default;

    /// Nullopt if the event cannot be created.
    virtual std::optional<KeyEvent> makeKeyboardEvent(quint16 keyCode, bool isDown) = 0;
    virtual void post(const KeyEvent &event) = 0;
};

} // namespace talmo
