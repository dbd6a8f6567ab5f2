#include "Platform/Linux/X11/Clipboard/SecretLifetime.h"

#include <utility>

namespace talmo {

SecretLifetime::SecretLifetime(XSession &session, std::function<void()> onEnd, std::chrono::milliseconds time)
    : m_session(session),
      m_onEnd(std::move(onEnd)),
      m_time(time)
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { end(); });
    m_session.addEventHandler([this](const xcb_generic_event_t &event) { handleEvent(event); });
}

void SecretLifetime::begin(xcb_window_t owner)
{
    forget();
    m_owner = owner;
    auto *connection = m_session.connection().get();
    constexpr quint32 events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, owner, XCB_CW_EVENT_MASK, &events);
    // It may have exited before it was watched.
    const XcbPtr<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, owner), nullptr));
    m_isOver = !attributes;
}

void SecretLifetime::forget()
{
    m_timer.stop();
    m_owner = XCB_NONE;
    m_isOver = false;
}

void SecretLifetime::putBack()
{
    if (!m_timer.isActive()) {
        m_timer.start(m_time);
    }
}

void SecretLifetime::handleEvent(const xcb_generic_event_t &event)
{
    if (m_owner != XCB_NONE && (event.response_type & 0x7f) == XCB_DESTROY_NOTIFY &&
        reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window == m_owner) { // NOLINT
        end();
    }
}

void SecretLifetime::end()
{
    m_timer.stop();
    m_isOver = true;
    m_onEnd();
}

} // namespace talmo
