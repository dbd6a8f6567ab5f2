#pragma once

#include "Platform/Linux/X11/XSession.h"

#include <functional>
#include <vector>

namespace talmo {

/// Asks windows whether they still handle their events. The answer follows whatever was sent to the window before, so
/// one that has answered has also handled the shortcut that was posted to it. The X session's thread only.
class WindowPing {
public:
    explicit WindowPing(XSession &session);

    /// Windows that do not take part in this are not asked.
    void send(xcb_window_t topLevel);
    /// Was asked and has not answered.
    bool isUnanswered(xcb_window_t topLevel) const;
    /// No answer is awaited any more.
    void forget(xcb_window_t topLevel);
    /// Called with a window that has answered, or that is gone.
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
