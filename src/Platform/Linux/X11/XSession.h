#pragma once

#include "Base/SerialExecutor.h"
#include "Platform/Linux/X11/Keys/PostedKeys.h"
#include "Platform/Linux/X11/XConnection.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <vector>

namespace talmo {

/// One connection to the X server with a thread of its own, shared by all that serve the clipboard and type: so the
/// order of a paste chord and of the reads it leads to is known, and the main thread never serves what it may itself
/// be waiting for.
///
/// Made on the main thread; everything else happens on the executor's thread.
class XSession {
public:
    using EventHandler = std::function<void(const xcb_generic_event_t &)>;

    /// Throws Error when there is no display.
    static std::shared_ptr<XSession> open();
    ~XSession();
    XSession(const XSession &) = delete;
    XSession &operator=(const XSession &) = delete;

    SerialExecutor &executor() const { return *m_executor; }
    const std::shared_ptr<PostedKeys> &postedKeys() const { return m_postedKeys; }

    // The executor's thread only.
    XConnection &connection() const { return *m_connection; }
    /// Never shown; owns and asks for selections.
    xcb_window_t window() const { return m_window; }
    void addEventHandler(EventHandler handler) { m_handlers.push_back(std::move(handler)); }
    /// Called once when the server is gone; one listener.
    void setOnConnectionLost(std::function<void()> callback) { m_onConnectionLost = std::move(callback); }
    void removeEventHandlers()
    {
        m_handlers.clear();
        m_onConnectionLost = {};
    }
    /// Sends what was written and handles whatever came meanwhile.
    void flush();
    /// Has seen and handled everything that happened before this call, the loss of a selection included.
    void synchronise();
    /// None when nobody owns it.
    xcb_window_t selectionOwner(xcb_atom_t selection);
    /// The server's time now, as selections want it.
    xcb_timestamp_t serverTime();

private:
    XSession();
    void openOnThread();
    void dispatch(XcbPtr<xcb_generic_event_t> event);

    std::shared_ptr<PostedKeys> m_postedKeys = std::make_shared<PostedKeys>();
    std::unique_ptr<XConnection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<EventHandler> m_handlers;
    std::function<void()> m_onConnectionLost;
    std::vector<XcbPtr<xcb_generic_event_t>> m_putBack;
    xcb_window_t m_window = XCB_NONE;
    // Last, so that its thread has ended before anything else goes.
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
