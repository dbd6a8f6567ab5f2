#include "Platform/Linux/X11/Keys/XCursorWatch.h"

#include <utility>

namespace talmo {

XCursorWatch::XCursorWatch(std::shared_ptr<XInput2EventMonitor> monitor)
    : m_monitor(std::move(monitor))
{
}

bool XCursorWatch::markPlace()
{
    const quint32 window = m_monitor->focusedWindow();
    const bool isSamePlace = window != 0 && window == m_window && !m_monitor->wasInputSeen();
    m_window = window;
    m_monitor->watchInput(window);
    return isSamePlace;
}

void XCursorWatch::forget()
{
    m_window = 0;
    m_monitor->watchInput(0);
}

} // namespace talmo
