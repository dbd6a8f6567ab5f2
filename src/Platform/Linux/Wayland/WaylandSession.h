#pragma once

#include "Base/SerialExecutor.h"

#include <wayland-client.h>

#include <QByteArray>
#include <QSocketNotifier>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace talmo {

/// One connection to the Wayland compositor with its own thread, shared by all code that serves the clipboard, types or
/// shows the overlay. The order of a paste shortcut and of the reads it causes is therefore known.
///
/// Created on the main thread; everything else happens on the executor's thread, unless noted otherwise.
class WaylandSession {
public:
    /// Null if WAYLAND_DISPLAY names no compositor, or it does not respond within ten seconds.
    static std::shared_ptr<WaylandSession> open();
    ~WaylandSession();
    WaylandSession(const WaylandSession &) = delete;
    WaylandSession &operator=(const WaylandSession &) = delete;

    SerialExecutor &executor() const { return *m_executor; }
    /// The version in which the compositor offered this interface when the session was opened; 0 if it did not. Any
    /// thread.
    quint32 offeredVersion(const QByteArray &interfaceName) const;

    wl_display *display() const { return m_display; }
    /// Null if there is none.
    wl_seat *seat() const { return m_seat; }
    /// Binds the first global of this interface, in the highest version that both sides know. Null if there is none.
    template <typename Proxy>
    Proxy *bind(const wl_interface &interface, quint32 version) const
    {
        return static_cast<Proxy *>(bindProxy(interface, version));
    }

    bool isBroken() const { return m_isBroken; }
    /// Called once when the compositor is gone.
    void addOnConnectionLost(std::function<void()> callback) { m_onConnectionLost.push_back(std::move(callback)); }
    /// Sends buffered requests.
    void flush();
    /// Returns once the events of everything that happened before this call have been handled, after one second at
    /// most. Not from an event's handler.
    void synchronise();
    /// Calls back once the compositor has carried out all requests sent so far, and the events that it sent before that
    /// have been handled. Never, if it is gone.
    void whenCarriedOut(std::function<void()> callback);

private:
    struct Global {
        quint32 name;
        QByteArray interface;
        quint32 version;
    };

    struct Awaited {
        wl_callback *callback;
        std::function<void()> function;
    };

    explicit WaylandSession(wl_display *display);
    bool openOnThread();
    bool readUntil(const std::function<bool()> &condition, std::chrono::milliseconds timeout);
    /// Handles what has arrived, after waiting this long for it; false if nothing has.
    bool readEvents(int timeout);
    void noteIfBroken();
    void *bindProxy(const wl_interface &interface, quint32 version) const;
    static void handleCarriedOut(void *self, wl_callback *callback, uint32_t serial);
    void closeOnThread();

    wl_display *m_display;
    wl_registry *m_registry = nullptr;
    wl_seat *m_seat = nullptr;
    bool m_isOpen = false;
    bool m_isBroken = false;
    /// What was offered when the session was opened; constant from then on.
    std::vector<Global> m_globals;
    std::deque<Awaited> m_awaited;
    std::vector<std::function<void()>> m_onConnectionLost;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    // Last, so that its thread has ended before the other members are destroyed.
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
