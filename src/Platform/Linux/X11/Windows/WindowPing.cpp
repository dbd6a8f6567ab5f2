#include "Platform/Linux/X11/Windows/WindowPing.h"

#include "Platform/Linux/X11/XProperty.h"

#include <algorithm>

namespace talmo {

WindowPing::WindowPing(XSession &session)
    : m_session(session)
{
    m_session.addEventHandler([this](const xcb_generic_event_t &event) { handleEvent(event); });
}

void WindowPing::send(xcb_window_t topLevel)
{
    auto &connection = m_session.connection();
    const auto protocols = xNumbers(xProperty(connection.get(), topLevel, connection.atom("WM_PROTOCOLS")));
    if (!protocols.contains(connection.atom("_NET_WM_PING")) || isUnanswered(topLevel)) {
        return;
    }
    m_unanswered.push_back(topLevel);
    listenToRoot(true);
    constexpr quint32 events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection.get(), topLevel, XCB_CW_EVENT_MASK, &events);
    xcb_client_message_event_t ping{};
    ping.response_type = XCB_CLIENT_MESSAGE;
    ping.format = 32;
    ping.window = topLevel;
    ping.type = connection.atom("WM_PROTOCOLS");
    ping.data.data32[0] = connection.atom("_NET_WM_PING");
    ping.data.data32[1] = m_session.serverTime();
    ping.data.data32[2] = topLevel;
    xcb_send_event(connection.get(), 0, topLevel, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&ping));
    connection.flush();
}

bool WindowPing::isUnanswered(xcb_window_t topLevel) const
{
    return std::find(m_unanswered.begin(), m_unanswered.end(), topLevel) != m_unanswered.end();
}

void WindowPing::forget(xcb_window_t topLevel)
{
    if (std::erase(m_unanswered, topLevel) > 0 && m_unanswered.empty()) {
        listenToRoot(false);
    }
}

void WindowPing::handleEvent(const xcb_generic_event_t &event)
{
    const auto type = event.response_type & 0x7f;
    if (type == XCB_DESTROY_NOTIFY) {
        settle(reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window); // NOLINT
    } else if (type == XCB_CLIENT_MESSAGE) {
        const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(event); // NOLINT
        auto &connection = m_session.connection();
        if (message.window == connection.root() && message.type == connection.atom("WM_PROTOCOLS") &&
            message.data.data32[0] == connection.atom("_NET_WM_PING")) {
            settle(message.data.data32[2]);
        }
    }
}

void WindowPing::settle(xcb_window_t topLevel)
{
    if (isUnanswered(topLevel)) {
        forget(topLevel);
        if (m_onAnswer) {
            m_onAnswer(topLevel);
        }
    }
}

/// Replies go to the root window with one of these two event masks, depending on the toolkit. Listens only while
/// needed: other events there would wake this thread for nothing.
void WindowPing::listenToRoot(bool listens)
{
    auto &connection = m_session.connection();
    constexpr quint32 both = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const quint32 events = listens ? both : quint32(XCB_EVENT_MASK_NO_EVENT);
    xcb_change_window_attributes(connection.get(), connection.root(), XCB_CW_EVENT_MASK, &events);
    connection.flush();
}

} // namespace talmo
