#pragma once

#include "Platform/Linux/X11/Clipboard/SelectionServer.h"
#include "Platform/Linux/X11/Windows/FrontWindow.h"
#include "Platform/Linux/X11/Windows/WindowPing.h"

#include <functional>
#include <map>

namespace talmo {

/// Windows that hang, and what was pasted into them meanwhile: each gets it when it wakes, whatever stands on the
/// clipboard by then. The X session's thread only.
class OverduePastes {
public:
    OverduePastes(XSession &session, SelectionServer &clipboard, SelectionServer &primary);

    /// Asks a window whether it hangs; hangs() is true until it has answered. False for one that takes no part in this.
    void ask(const FrontWindow &window) { m_ping.send(window.topLevel); }
    bool hangs(const FrontWindow &window) const { return m_ping.isUnanswered(window.topLevel); }
    /// Nobody wants to know any more; not for a window that something is kept for.
    void stopAsking(const FrontWindow &window);

    /// Keeps the text for a window that hangs.
    void add(const FrontWindow &window, const QString &text);
    /// Adds to what is kept for a window that still hangs: it will carry out one paste, of everything. False when it
    /// does not hang; what was kept for it is then dropped, as it has had its chance.
    bool extend(const FrontWindow &window, const QString &text);
    /// The client has read something; soon nothing is kept for it.
    void noteRead(quint32 client);

    bool isEmpty() const { return m_kept.empty(); }
    void clear();
    /// Called when nothing is kept any more.
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
