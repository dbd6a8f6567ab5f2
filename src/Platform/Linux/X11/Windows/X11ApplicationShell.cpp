#include "Platform/Linux/X11/Windows/X11ApplicationShell.h"

#include "Platform/Linux/X11/XProperty.h"

#include <QGuiApplication>
#include <QWindow>

#include <utility>

namespace talmo {

namespace {

/// Sends the request as a pager would: a window manager may refuse a program that activates itself, but the user has
/// just asked for this, possibly in a way that the window manager could not see.
void activate(const QWindow &window)
{
    constexpr quint32 askedByTheUser = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = applicationAtom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = askedByTheUser;
    xcb_send_event(applicationConnection(), 0, applicationRoot(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&message)); // NOLINT: events are bytes to xcb.
    xcb_flush(applicationConnection());
}

} // namespace

X11ApplicationShell::X11ApplicationShell(std::function<void()> quit)
    : m_quit(std::move(quit))
{
}

/// On X11 only windows put a program into task bars, and an accessory has none until it is asked for one.
void X11ApplicationShell::setActivationPolicy(ActivationPolicy policy)
{
    QGuiApplication::setQuitOnLastWindowClosed(policy == ActivationPolicy::Regular);
}

void X11ApplicationShell::activateIgnoringOtherApps()
{
    for (const auto *window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->type() == Qt::Window) {
            activate(*window);
        }
    }
}

void X11ApplicationShell::terminate()
{
    m_quit();
}

} // namespace talmo
