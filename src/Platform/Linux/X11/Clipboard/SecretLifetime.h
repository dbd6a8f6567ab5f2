#pragma once

#include "Platform/Linux/X11/XSession.h"

#include <QTimer>

#include <chrono>
#include <functional>

namespace talmo {

/// Limits how long Talmo keeps a secret it found on the clipboard: a password manager removes its passwords after a
/// while, but cannot while Talmo owns the clipboard. A secret expires with the program that copied it, or a minute
/// after Talmo has restored it. The X session's thread only.
class SecretLifetime {
public:
    static constexpr std::chrono::minutes longestTime{1};

    /// `onEnd` is called when a restored secret expires.
    SecretLifetime(XSession &session, std::function<void()> onEnd, std::chrono::milliseconds time = longestTime);

    /// Call when the content just read is this owner's secret.
    void begin(xcb_window_t owner);
    /// Call when the content just read is not a secret.
    void forget();

    bool isSecret() const { return m_owner != XCB_NONE; }
    /// It must not be on the clipboard any longer.
    bool isOver() const { return m_isOver; }
    /// Call when the secret is restored to the clipboard; the minute starts with the first call.
    void putBack();

private:
    void handleEvent(const xcb_generic_event_t &event);
    void end();

    XSession &m_session;
    std::function<void()> m_onEnd;
    std::chrono::milliseconds m_time;
    xcb_window_t m_owner = XCB_NONE;
    bool m_isOver = false;
    QTimer m_timer;
};

} // namespace talmo
