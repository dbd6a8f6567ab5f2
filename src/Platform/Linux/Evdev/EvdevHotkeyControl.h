#pragma once

#include "Platform/Linux/Evdev/EvdevEventMonitor.h"
#include "Platform/Linux/Keys/TriggerKeyControl.h"

#include <memory>

namespace talmo {

/// None is kept from the other programs.
class EvdevHotkeyControl final : public TriggerKeyControl {
public:
    EvdevHotkeyControl(std::shared_ptr<EvdevEventMonitor> monitor, QStringList names);
    ~EvdevHotkeyControl() override;

    void beginCapture(std::function<void(const Press &)> onPress) override;
    void endCapture() override;
    void setReleased(bool) override {}

private:
    void setTriggerKeys(const QList<quint32> &keySymbols) override;
    std::set<int> codesOf(quint32 keySymbol) const override;
    bool isRefused(int) const override { return false; }
    bool isFree(int) const override { return true; }

    std::shared_ptr<EvdevEventMonitor> m_monitor;
};

} // namespace talmo
