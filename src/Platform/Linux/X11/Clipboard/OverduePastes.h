#pragma once

#include "Platform/Linux/X11/Clipboard/SelectionServer.h"
#include "Platform/Linux/X11/Windows/FrontWindow.h"
#include "Platform/Linux/X11/Windows/WindowPing.h"

#include <functional>
#include <map>

namespace talmo {

/// The texts that were pasted into windows that hang: each window gets its text when it responds again, whatever is on
/// the clipboard by then. The X session's thread only.
class OverduePastes {
public:
    OverduePastes(XSession &session, SelectionServer &clipboard, SelectionServer &primary);

    /// Pings a window; hangs() is true until it has responded. hangs() is false for windows that do not support pings.
    void ask(const FrontWindow &window) { m_ping.send(window.topLevel); }
    bool hangs(const FrontWindow &window) const { return m_ping.isUnanswered(window.topLevel); }
    /// Stops waiting for a response, unless a text is kept for the window.
    void stopAsking(const FrontWindow &window);

    /// Keeps the text for a window that hangs.
    void add(const FrontWindow &window, const QString &text);
    /// Appends to the text kept for a window that still hangs: it will carry out only one paste, of everything. False
    /// if it does not hang; the text kept for it is then dropped, as it has had its chance.
    bool extend(const FrontWindow &window, const QString &text);
    /// Call when the client has read something; the text kept for it is then dropped soon.
    void noteRead(quint32 client);

    bool isEmpty() const { return m_kept.empty(); }
    void clear();
    /// Called when no text is kept any longer.
    void setOnEmpty(std::function<void()> callback) { m_onEmpty = std::move(callback); }

private:
    struct Kept {
        xcb_window_t topLevel;
        QString text;
    };
    void serve(quint32 client);
    void drop(quint32 client);
    void dropLater(quint32 client, std::chrono::milliseconds delay);
    void handleAnswer(xcb_window_t topLevel);

    SelectionServer &m_clipboard;
    SelectionServer &m_primary;
    WindowPing m_ping;
    std::map<quint32, Kept> m_kept;
    std::function<void()> m_onEmpty;
    QObject m_context;
};

} // namespace talmo
