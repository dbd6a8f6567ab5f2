#pragma once

#include "Platform/Linux/X11/XSession.h"

#include <QTimer>

#include <chrono>
#include <functional>

namespace talmo {

/// How long Talmo keeps a secret that it has found on the clipboard: a password manager takes its passwords away after
/// a while, and cannot while Talmo owns the clipboard. A secret ends with the program that copied it, and a minute
/// after Talmo has put it back. The X session's thread only.
class SecretLifetime {
public:
    static constexpr std::chrono::minutes longestTime{1};

    /// `onEnd` is called when a secret that was put back has to go.
    SecretLifetime(XSession &session, std::function<void()> onEnd, std::chrono::milliseconds time = longestTime);

    /// What was just read is this owner's secret.
    void begin(xcb_window_t owner);
    /// What was just read is no secret.
    void forget();

    bool isSecret() const { return m_owner != XCB_NONE; }
    /// It must not stand on the clipboard any more.
    bool isOver() const { return m_isOver; }
    /// The secret stands on the clipboard again; the minute begins with the first time.
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
