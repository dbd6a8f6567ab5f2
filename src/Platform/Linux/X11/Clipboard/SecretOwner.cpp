#include "Platform/Linux/X11/Clipboard/SecretOwner.h"

namespace talmo {

SecretOwner::SecretOwner(XSession &session, SecretLifetime &secret)
    : m_session(session),
      m_secret(secret)
{
    m_session.addEventHandler([this](const xcb_generic_event_t &event) { handleEvent(event); });
}

void SecretOwner::watch(xcb_window_t owner)
{
    m_owner = owner;
    if (!m_secret.isSecret()) {
        return;
    }
    auto *connection = m_session.connection().get();
    constexpr quint32 events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, owner, XCB_CW_EVENT_MASK, &events);
    // It may have exited before it was watched.
    const XcbPtr<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, owner), nullptr));
    if (!attributes) {
        m_secret.end();
    }
}

void SecretOwner::handleEvent(const xcb_generic_event_t &event)
{
    if (m_owner != XCB_NONE && (event.response_type & 0x7f) == XCB_DESTROY_NOTIFY &&
        reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window == m_owner) { // NOLINT
        m_secret.end();
    }
}

} // namespace talmo
