#pragma once

#include "Base/SerialExecutor.h"
#include "Platform/Linux/X11/Keys/PostedKeys.h"
#include "Platform/Linux/X11/XConnection.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <vector>

namespace talmo {

/// One connection to the X server with its own thread, shared by all code that serves the clipboard or types. The order
/// of a paste shortcut and of the reads it causes is therefore known, and the main thread never has to serve a request
/// while it waits for the requester.
///
/// Created on the main thread; everything else happens on the executor's thread.
class XSession {
public:
    using EventHandler = std::function<void(const xcb_generic_event_t &)>;

    /// Throws Error if there is no display. `isNested`: the server shows its windows within a Wayland session, so other
    /// programs may have windows that it does not know.
    static std::shared_ptr<XSession> open(bool isNested = false);
    ~XSession();
    XSession(const XSession &) = delete;
    XSession &operator=(const XSession &) = delete;

    SerialExecutor &executor() const { return *m_executor; }
    const std::shared_ptr<PostedKeys> &postedKeys() const { return m_postedKeys; }

    bool isNested() const { return m_isNested; }

    // The executor's thread only.
    XConnection &connection() const { return *m_connection; }
    /// Never shown; owns and requests selections.
    xcb_window_t window() const { return m_window; }
    void addEventHandler(EventHandler handler) { m_handlers.push_back(std::move(handler)); }
    /// Called once when the server is gone; one listener.
    void setOnConnectionLost(std::function<void()> callback) { m_onConnectionLost = std::move(callback); }
    void removeEventHandlers()
    {
        m_handlers.clear();
        m_onConnectionLost = {};
    }
    /// Sends buffered requests and handles pending events.
    void flush();
    /// Returns once everything that happened before this call has been received and handled, including the loss of a
    /// selection.
    void synchronise();
    /// XCB_NONE if there is no owner.
    xcb_window_t selectionOwner(xcb_atom_t selection);
    /// The server's current time, as selections need it.
    xcb_timestamp_t serverTime();

private:
    explicit XSession(bool isNested);
    void openOnThread();
    void dispatch(XcbPtr<xcb_generic_event_t> event);

    bool m_isNested;
    std::shared_ptr<PostedKeys> m_postedKeys = std::make_shared<PostedKeys>();
    std::unique_ptr<XConnection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<EventHandler> m_handlers;
    std::function<void()> m_onConnectionLost;
    std::vector<XcbPtr<xcb_generic_event_t>> m_deferredEvents;
    xcb_window_t m_window = XCB_NONE;
    // Last, so that its thread has ended before the other members are destroyed.
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
