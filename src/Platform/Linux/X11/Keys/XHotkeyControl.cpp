#include "Platform/Linux/X11/Keys/XHotkeyControl.h"

#include "Platform/Linux/Keys/CapturedKey.h"

#include <utility>

namespace talmo {

namespace {

quint8 keyCodeOf(int kernelCode)
{
    return static_cast<quint8>(kernelCode + firstXKeyCode);
}

} // namespace

XHotkeyControl::XHotkeyControl(std::shared_ptr<XInput2EventMonitor> monitor, QStringList names)
    : TriggerKeyControl(std::move(names)),
      m_monitor(std::move(monitor))
{
}

XHotkeyControl::~XHotkeyControl()
{
    m_monitor->captureKey({});
}

void XHotkeyControl::beginCapture(std::function<void(const Press &)> onPress)
{
    m_monitor->captureKey([onPress = std::move(onPress)](quint8 keyCode, quint32 plain, quint32 shifted) {
        onPress(capturedKey(keyCode - firstXKeyCode, plain, shifted));
    });
}

void XHotkeyControl::endCapture()
{
    m_monitor->captureKey({});
}

void XHotkeyControl::setReleased(bool isReleased)
{
    m_monitor->setTriggersReleased(isReleased);
}

void XHotkeyControl::setTriggerKeys(const QList<quint32> &keySymbols)
{
    m_monitor->setTriggerKeys(keySymbols);
}

std::set<int> XHotkeyControl::codesOf(quint32 keySymbol) const
{
    std::set<int> codes;
    for (const auto keyCode : m_monitor->keyCodesOf(keySymbol)) {
        codes.insert(keyCode - firstXKeyCode);
    }
    return codes;
}

bool XHotkeyControl::isRefused(int code) const
{
    return m_monitor->refusedKeys().contains(keyCodeOf(code));
}

bool XHotkeyControl::isFree(int code) const
{
    return m_monitor->isKeyFree(keyCodeOf(code));
}

} // namespace talmo
