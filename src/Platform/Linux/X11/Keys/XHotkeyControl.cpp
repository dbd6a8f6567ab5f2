#include "Platform/Linux/X11/Keys/XHotkeyControl.h"

#include "Platform/Linux/Keys/CapturedKey.h"
#include "Platform/Linux/Keys/KeyboardCapabilities.h"
#include "Platform/Linux/Keys/TriggerKeys.h"

#include <algorithm>
#include <utility>

namespace talmo {

XHotkeyControl::XHotkeyControl(std::shared_ptr<XInput2EventMonitor> monitor, QStringList names)
    : m_monitor(std::move(monitor)),
      m_names(std::move(names))
{
}

XHotkeyControl::~XHotkeyControl()
{
    m_monitor->captureKey({});
}

void XHotkeyControl::setKeys(const QStringList &names)
{
    m_names = names;
    m_monitor->setTriggerKeys(triggerKeySymbols(names));
}

HotkeyControl::Keys XHotkeyControl::keys() const
{
    const auto parsed = TriggerKeyNames::parse(m_names);
    Keys keys;
    keys.unknown = parsed.unknown;
    keys.typing = parsed.typing;
    for (const auto symbol : parsed.symbols) {
        const Key key = hotkeyOf(symbol);
        const auto keyCodes = m_monitor->keyCodesOf(symbol);
        if (parsed.areDefault && symbol != parsed.symbols.first()) {
            continue; // Those are there for the keyboards that have them; nobody chose them.
        }
        keys.used.append(key);
        if (keyCodes.empty()) {
            keys.missing.append(key.title);
        }
        const auto &refused = m_monitor->refusedKeys();
        if (std::any_of(keyCodes.begin(), keyCodes.end(), [&refused](auto code) { return refused.contains(code); })) {
            keys.taken.append(key.title);
        }
    }
    return keys;
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

std::optional<HotkeyControl::Key> XHotkeyControl::suggestion() const
{
    for (const auto symbol : suggestedTriggerKeys()) {
        for (const auto keyCode : m_monitor->keyCodesOf(symbol)) {
            if (KeyboardCapabilities::anyKeyboardHas(keyCode - firstXKeyCode).value_or(true) &&
                m_monitor->isKeyFree(keyCode)) {
                return hotkeyOf(symbol);
            }
        }
    }
    return std::nullopt;
}

bool XHotkeyControl::isOnKeyboard(const QString &name) const
{
    const auto keyCodes = m_monitor->keyCodesOf(TriggerKeyNames::parse({name}).symbols.first());
    return std::any_of(keyCodes.begin(), keyCodes.end(), [](auto keyCode) {
        return KeyboardCapabilities::anyKeyboardHas(keyCode - firstXKeyCode).value_or(true);
    });
}

} // namespace talmo
