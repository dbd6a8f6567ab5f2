#include "Platform/Linux/X11/Keys/XKeyGrabs.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <vector>

namespace talmo {

namespace {

constexpr std::array<quint32, 4> lockSets{0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, lockModifiers};

} // namespace

std::set<quint16> modifiersToGrab(const KeyboardLayout &layout)
{
    quint16 held = 0;
    for (int modifier = 0; modifier < 8; ++modifier) {
        for (const auto keyCode : layout.modifierKeys[modifier]) {
            const auto end = layout.heldKeys.end();
            if (std::find(layout.heldKeys.begin(), end, keyCode) != end) {
                held = static_cast<quint16>(held | 1U << modifier);
            }
        }
    }
    std::set<quint16> all;
    for (const unsigned base : {0U, held & ~lockModifiers}) {
        for (const unsigned lock : {0U, unsigned(XCB_MOD_MASK_LOCK), unsigned(XCB_MOD_MASK_2), lockModifiers}) {
            all.insert(static_cast<quint16>(base | lock));
        }
    }
    return all;
}

XKeyGrabs::XKeyGrabs(XConnection &connection)
    : m_connection(connection)
{
}

void XKeyGrabs::set(const std::set<std::uint8_t> &keyCodes)
{
    for (const auto keyCode : std::set(m_grabbed)) {
        if (!keyCodes.contains(keyCode)) {
            ungrab(keyCode);
        }
    }
    m_refused.clear();
    for (const auto keyCode : keyCodes) {
        if (!has(keyCode) && !grab(keyCode)) {
            m_refused.insert(keyCode);
        }
    }
    m_connection.flush();
}

bool XKeyGrabs::isFree(std::uint8_t keyCode)
{
    if (has(keyCode)) {
        return true;
    }
    const bool isGranted = grab(keyCode);
    if (isGranted) {
        ungrab(keyCode);
    }
    return isGranted;
}

/// The server lets a core grab and an XInput grab of one key coexist, so that only a core grab tells whether
/// another program has one.
bool XKeyGrabs::isTaken(std::uint8_t keyCode)
{
    auto *connection = m_connection.get();
    bool isTaken = false;
    for (const auto lockSet : lockSets) {
        const auto modifiers = static_cast<quint16>(lockSet);
        const XcbPtr<xcb_generic_error_t> error(
            xcb_request_check(connection, xcb_grab_key_checked(connection, 0, m_connection.root(), modifiers, keyCode,
                                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        isTaken = isTaken || error;
        xcb_ungrab_key(connection, keyCode, m_connection.root(), modifiers);
    }
    return isTaken;
}

/// An XInput grab, whose events tell a repetition from a press. For core grabs, the server would also hide the raw
/// events of every key that is pressed meanwhile.
bool XKeyGrabs::grab(std::uint8_t keyCode)
{
    if (isTaken(keyCode)) {
        return false;
    }
    auto *connection = m_connection.get();
    const quint32 events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE |
                           XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    const XcbPtr<xcb_input_xi_passive_grab_device_reply_t> reply(xcb_input_xi_passive_grab_device_reply(
        connection,
        xcb_input_xi_passive_grab_device(connection, XCB_CURRENT_TIME, m_connection.root(), XCB_NONE, keyCode,
                                         XCB_INPUT_DEVICE_ALL_MASTER, static_cast<quint16>(lockSets.size()), 1,
                                         XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                         XCB_INPUT_GRAB_MODE_22_ASYNC, 0, &events, lockSets.data()),
        nullptr));
    m_grabbed.insert(keyCode);
    const bool isGranted = reply && reply->num_modifiers == 0; // Those that could not be granted.
    if (!isGranted) {                                          // A partial grab is useless.
        ungrab(keyCode);
    }
    return isGranted;
}

void XKeyGrabs::ungrab(std::uint8_t keyCode)
{
    xcb_input_xi_passive_ungrab_device(m_connection.get(), m_connection.root(), keyCode, XCB_INPUT_DEVICE_ALL_MASTER,
                                       static_cast<quint16>(lockSets.size()), XCB_INPUT_GRAB_TYPE_KEYCODE,
                                       lockSets.data());
    m_connection.flush();
    m_grabbed.erase(keyCode);
}

} // namespace talmo
