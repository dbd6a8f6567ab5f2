#pragma once

#include "Platform/Linux/Keys/TriggerKeyControl.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"

#include <memory>

namespace talmo {

/// Those that are not modifiers are kept from the other programs.
class XHotkeyControl final : public TriggerKeyControl {
public:
    XHotkeyControl(std::shared_ptr<XInput2EventMonitor> monitor, QStringList names);
    ~XHotkeyControl() override;

    void beginCapture(std::function<void(const Press &)> onPress) override;
    void endCapture() override;
    void setReleased(bool isReleased) override;

private:
    void setTriggerKeys(const QList<quint32> &keySymbols) override;
    std::set<int> codesOf(quint32 keySymbol) const override;
    bool isRefused(int code) const override;
    bool isFree(int code) const override;

    std::shared_ptr<XInput2EventMonitor> m_monitor;
};

} // namespace talmo
