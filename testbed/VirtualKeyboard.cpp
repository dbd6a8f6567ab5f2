#include "VirtualKeyboard.h"

#include "Base/Error.h"
#include "Platform/Linux/X11/Keys/KeyboardLayoutReader.h"

#include <xcb/xtest.h>

namespace talmo::testbed {

void VirtualKeyboard::press(quint32 keySym)
{
    send(keySym, XCB_KEY_PRESS);
}

void VirtualKeyboard::release(quint32 keySym)
{
    send(keySym, XCB_KEY_RELEASE);
}

void VirtualKeyboard::tap(quint32 keySym)
{
    press(keySym);
    release(keySym);
}

void VirtualKeyboard::send(quint32 keySym, quint8 type)
{
    const auto keyCode = keyCodeFor(readKeyboardLayout(m_connection), keySym);
    if (!keyCode) {
        throw Error(QStringLiteral("The keyboard layout lacks this key."));
    }
    xcb_test_fake_input(m_connection.get(), type, *keyCode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    // Waits until the server has processed the event, so that later events come after it.
    const XcbPtr<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
}

} // namespace talmo::testbed
