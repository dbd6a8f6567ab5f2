#pragma once

#include "Input/Hotkey/CancelKey.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"

#include <memory>

namespace talmo {

/// Escape, by a passive grab on the key monitor's connection, so that the monitor knows which presses are Talmo's.
class XCancelKey final : public CancelKey {
public:
    explicit XCancelKey(std::shared_ptr<XInput2EventMonitor> monitor);
    ~XCancelKey() override;

    bool grab(std::function<void()> onPressed) override;
    void release() override;

private:
    std::shared_ptr<XInput2EventMonitor> m_monitor;
};

} // namespace talmo
