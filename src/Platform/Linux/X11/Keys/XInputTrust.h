#pragma once

#include "Input/Permissions/InputTrust.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"
#include "Platform/Linux/X11/XSession.h"

#include <memory>

namespace talmo {

/// X11 has no permission for this: access counts as granted if the server has XInput 2.2, to observe keys, and XTEST,
/// to type.
class XInputTrust final : public InputTrust {
public:
    /// Without a monitor, for a program that only types, XTEST is enough.
    XInputTrust(const std::shared_ptr<XSession> &session, std::shared_ptr<XInput2EventMonitor> monitor);

    bool isTrusted() const override;
    bool requestTrust() override { return isTrusted(); }

private:
    std::shared_ptr<XInput2EventMonitor> m_monitor;
    bool m_hasXTest;
};

} // namespace talmo
