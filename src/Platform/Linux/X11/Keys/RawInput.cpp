#include "Platform/Linux/X11/Keys/RawInput.h"

namespace talmo::RawInput {

namespace {

constexpr quint32 rawKeys = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
constexpr quint32 rawClicks = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_TOUCH_BEGIN;

bool isWheel(quint32 button)
{
    constexpr quint32 firstWheelButton = 4;
    constexpr quint32 lastWheelButton = 7;
    return button >= firstWheelButton && button <= lastWheelButton;
}

} // namespace

quint8 queryExtension(XConnection &connection)
{
    const auto *extension = xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return 0;
    }
    // For clients of version 2.0, servers hide raw events during another program's grab.
    const XcbPtr<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection.get(), xcb_input_xi_query_version(connection.get(), 2, 2), nullptr));
    const bool isNewEnough =
        version && (version->major_version > 2 || (version->major_version == 2 && version->minor_version >= 2));
    return isNewEnough ? extension->major_opcode : quint8(0);
}

xcb_void_cookie_t select(XConnection &connection, bool withClicks)
{
    // Master devices only: the physical ones would deliver every key twice.
    struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } selection{};
    selection.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    selection.head.mask_len = 1;
    selection.mask = withClicks ? rawKeys | rawClicks : rawKeys;
    return xcb_input_xi_select_events_checked(connection.get(), connection.root(), 1, &selection.head);
}

bool isKey(const xcb_ge_generic_event_t &event)
{
    return event.event_type == XCB_INPUT_RAW_KEY_PRESS || event.event_type == XCB_INPUT_RAW_KEY_RELEASE;
}

bool isClick(const xcb_ge_generic_event_t &event)
{
    const auto &raw = reinterpret_cast<const xcb_input_raw_button_press_event_t &>(event); // NOLINT
    return event.event_type == XCB_INPUT_RAW_TOUCH_BEGIN ||
           (event.event_type == XCB_INPUT_RAW_BUTTON_PRESS && !isWheel(raw.detail));
}

} // namespace talmo::RawInput
