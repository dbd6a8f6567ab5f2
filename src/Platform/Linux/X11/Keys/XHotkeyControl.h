#pragma once

#include "Input/Hotkey/HotkeyControl.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"

#include <memory>

namespace talmo {

/// The trigger keys of the key monitor.
class XHotkeyControl final : public HotkeyControl {
public:
    XHotkeyControl(std::shared_ptr<XInput2EventMonitor> monitor, QStringList names);
    ~XHotkeyControl() override;

    void setKeys(const QStringList &names) override;
    Keys keys() const override;
    void beginCapture(std::function<void(const Press &)> onPress) override;
    void endCapture() override;
    void setReleased(bool isReleased) override;
    std::optional<Key> suggestion() const override;
    bool isOnKeyboard(const QString &name) const override;

private:
    std::shared_ptr<XInput2EventMonitor> m_monitor;
    QStringList m_names;
};

} // namespace talmo
