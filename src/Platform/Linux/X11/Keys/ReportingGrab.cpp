#include "Platform/Linux/X11/Keys/ReportingGrab.h"

#include "Platform/Linux/X11/Keys/XKeyGrabs.h"

#include <utility>
#include <vector>

namespace talmo {

ReportingGrab::ReportingGrab(XConnection &connection)
    : m_connection(connection)
{
}

bool ReportingGrab::grab(const KeyboardLayout &layout, quint8 keyCode, std::function<void()> onPressed)
{
    auto *connection = m_connection.get();
    std::vector<std::pair<quint16, xcb_void_cookie_t>> requests;
    for (const auto modifiers : modifiersToGrab(layout)) {
        requests.emplace_back(modifiers, xcb_grab_key_checked(connection, 0, m_connection.root(), modifiers, keyCode,
                                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool isGrabbed = true;
    for (const auto &[modifiers, cookie] : requests) {
        const XcbPtr<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
        // With the trigger held it may already be a desktop shortcut; pressed alone it still discards the recording.
        isGrabbed = isGrabbed && (!error || (modifiers & ~lockModifiers) != 0);
    }
    m_keyCode = keyCode;
    m_onPressed = std::move(onPressed);
    return isGrabbed;
}

void ReportingGrab::release()
{
    if (m_keyCode != 0) {
        xcb_ungrab_key(m_connection.get(), m_keyCode, m_connection.root(), XCB_MOD_MASK_ANY);
        m_connection.flush();
    }
    m_keyCode = 0;
    m_wasPressed = false;
    m_onPressed = {};
}

void ReportingGrab::reportPress()
{
    if (std::exchange(m_wasPressed, false) && m_onPressed) {
        const auto report = m_onPressed; // It may end the grab.
        report();
    }
}

} // namespace talmo
