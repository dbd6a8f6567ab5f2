#pragma once

#include "Input/Hotkey/HotkeyControl.h"
#include "Platform/Linux/Evdev/EvdevEventMonitor.h"

#include <memory>

namespace talmo {

/// The trigger keys of the key monitor. None is kept from the other programs.
class EvdevHotkeyControl final : public HotkeyControl {
public:
    EvdevHotkeyControl(std::shared_ptr<EvdevEventMonitor> monitor, QStringList names);
    ~EvdevHotkeyControl() override;

    void setKeys(const QStringList &names) override;
    Keys keys() const override;
    void beginCapture(std::function<void(const Press &)> onPress) override;
    void endCapture() override;
    void setReleased(bool) override {}
    std::optional<Key> suggestion() const override;
    bool isOnKeyboard(const QString &name) const override;

private:
    bool isOnKeyboard(quint32 keySymbol) const;

    std::shared_ptr<EvdevEventMonitor> m_monitor;
    QStringList m_names;
};

} // namespace talmo
