#pragma once

#include "Platform/Linux/X11/XSession.h"

#include <functional>
#include <vector>

namespace talmo {

/// Pings windows to find out whether they still handle events. A reply comes after everything sent to the window
/// before, so a window that has replied has also handled the shortcut posted to it. The X session's thread only.
class WindowPing {
public:
    explicit WindowPing(XSession &session);

    /// Does nothing for windows that do not support pings.
    void send(xcb_window_t topLevel);
    /// Whether the window was pinged and has not replied.
    bool isUnanswered(xcb_window_t topLevel) const;
    /// Stops waiting for a reply.
    void forget(xcb_window_t topLevel);
    /// Called with a window that has replied or is gone.
    void setOnAnswer(std::function<void(xcb_window_t topLevel)> callback) { m_onAnswer = std::move(callback); }

private:
    void handleEvent(const xcb_generic_event_t &event);
    void settle(xcb_window_t topLevel);
    void listenToRoot(bool listens);

    XSession &m_session;
    std::vector<xcb_window_t> m_unanswered;
    std::function<void(xcb_window_t)> m_onAnswer;
};

} // namespace talmo
