#include "Platform/Linux/X11/Keys/XInputTrust.h"

#include <xcb/xtest.h>

#include <utility>

namespace talmo {

XInputTrust::XInputTrust(const std::shared_ptr<XSession> &session, std::shared_ptr<XInput2EventMonitor> monitor)
    : m_monitor(std::move(monitor))
{
    auto answer = session->executor().call([raw = session.get()] {
        const auto *extension = xcb_get_extension_data(raw->connection().get(), &xcb_test_id);
        return extension != nullptr && extension->present != 0;
    });
    m_hasXTest = answer.result();
}

bool XInputTrust::isTrusted() const
{
    return m_hasXTest && (!m_monitor || m_monitor->isUsable());
}

} // namespace talmo
