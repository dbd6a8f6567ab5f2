#include "Platform/Linux/X11/Keys/XCancelKey.h"

#include <utility>

namespace talmo {

namespace {

constexpr quint32 keySymEscape = 0xff1b;

} // namespace

XCancelKey::XCancelKey(std::shared_ptr<XInput2EventMonitor> monitor)
    : m_monitor(std::move(monitor))
{
}

XCancelKey::~XCancelKey()
{
    release();
}

bool XCancelKey::grab(std::function<void()> onPressed)
{
    return m_monitor->grabKey(keySymEscape, std::move(onPressed));
}

void XCancelKey::release()
{
    m_monitor->ungrabKey();
}

} // namespace talmo
