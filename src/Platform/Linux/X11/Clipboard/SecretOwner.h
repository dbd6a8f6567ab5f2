#pragma once

#include "Platform/Linux/Session/SecretLifetime.h"
#include "Platform/Linux/X11/XSession.h"

namespace talmo {

/// Ends a secret once the window that offered it is destroyed, as it is when its program ends. The X session's thread
/// only.
class SecretOwner {
public:
    /// `secret` must outlive this.
    SecretOwner(XSession &session, SecretLifetime &secret);

    /// Call after each SecretLifetime::noteContent(), with the window that offered the content.
    void watch(xcb_window_t owner);

private:
    void handleEvent(const xcb_generic_event_t &event);

    XSession &m_session;
    SecretLifetime &m_secret;
    xcb_window_t m_owner = XCB_NONE;
};

} // namespace talmo
