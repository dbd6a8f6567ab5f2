#include "Platform/Linux/Evdev/EvdevHotkeyControl.h"

#include "Platform/Linux/Keys/CapturedKey.h"

#include <utility>

namespace talmo {

EvdevHotkeyControl::EvdevHotkeyControl(std::shared_ptr<EvdevEventMonitor> monitor, QStringList names)
    : TriggerKeyControl(std::move(names)),
      m_monitor(std::move(monitor))
{
}

EvdevHotkeyControl::~EvdevHotkeyControl()
{
    m_monitor->captureKey({});
}

void EvdevHotkeyControl::beginCapture(std::function<void(const Press &)> onPress)
{
    m_monitor->captureKey([this, onPress = std::move(onPress)](int code) {
        const auto [plain, shifted] = m_monitor->layout().symbolsOf(code);
        onPress(capturedKey(code, plain, shifted));
    });
}

void EvdevHotkeyControl::endCapture()
{
    m_monitor->captureKey({});
}

void EvdevHotkeyControl::setTriggerKeys(const QList<quint32> &keySymbols)
{
    m_monitor->setTriggerKeys(keySymbols);
}

std::set<int> EvdevHotkeyControl::codesOf(quint32 keySymbol) const
{
    return m_monitor->layout().codesOf(keySymbol);
}

} // namespace talmo
