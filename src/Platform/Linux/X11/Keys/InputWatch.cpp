#include "Platform/Linux/X11/Keys/InputWatch.h"

#include "Platform/Linux/X11/Keys/RawInput.h"

#include <utility>

namespace talmo {

InputWatch::InputWatch(XConnection &connection)
    : m_connection(connection)
{
}

void InputWatch::watch(quint32 window)
{
    m_wasInputSeen = false;
    if (m_window == window) {
        return;
    }
    watchEnd(XCB_EVENT_MASK_NO_EVENT);
    const bool wasWatching = std::exchange(m_window, window) != 0;
    watchEnd(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    if ((window != 0) != wasWatching) {
        // Not waited for: this may be called in the middle of handling events.
        xcb_discard_reply(m_connection.get(), RawInput::select(m_connection, window != 0).sequence);
    }
    m_connection.flush();
}

/// The window may be gone; the error says nothing new.
void InputWatch::watchEnd(quint32 mask)
{
    if (m_window != 0) {
        xcb_change_window_attributes(m_connection.get(), m_window, XCB_CW_EVENT_MASK, &mask);
    }
}

void InputWatch::noteInput()
{
    if (m_window != 0) {
        watch(0);
        m_wasInputSeen = true;
    }
}

void InputWatch::noteDestroyed(quint32 window)
{
    if (window == m_window) {
        noteInput();
    }
}

} // namespace talmo
