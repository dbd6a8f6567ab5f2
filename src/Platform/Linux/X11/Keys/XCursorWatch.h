#pragma once

#include "Insertion/CursorWatch.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"

#include <memory>

namespace talmo {

/// Judges by the window with the keyboard focus and by what the key monitor sees. Costs one round trip per mark.
class XCursorWatch final : public CursorWatch {
public:
    explicit XCursorWatch(std::shared_ptr<XInput2EventMonitor> monitor);

    bool markPlace() override;
    void forget() override;

private:
    std::shared_ptr<XInput2EventMonitor> m_monitor;
    /// Zero if no window is marked.
    quint32 m_window = 0;
};

} // namespace talmo
