#include "Platform/Linux/Evdev/EvdevHotkeyControl.h"

#include "Platform/Linux/Keys/CapturedKey.h"
#include "Platform/Linux/Keys/KeyboardCapabilities.h"
#include "Platform/Linux/Keys/TriggerKeys.h"

#include <algorithm>
#include <utility>

namespace talmo {

EvdevHotkeyControl::EvdevHotkeyControl(std::shared_ptr<EvdevEventMonitor> monitor, QStringList names)
    : m_monitor(std::move(monitor)),
      m_names(std::move(names))
{
}

EvdevHotkeyControl::~EvdevHotkeyControl()
{
    m_monitor->captureKey({});
}

void EvdevHotkeyControl::setKeys(const QStringList &names)
{
    m_names = names;
    m_monitor->setTriggerKeys(triggerKeySymbols(names));
}

HotkeyControl::Keys EvdevHotkeyControl::keys() const
{
    const auto parsed = TriggerKeyNames::parse(m_names);
    Keys keys;
    keys.unknown = parsed.unknown;
    keys.typing = parsed.typing;
    for (const auto symbol : parsed.symbols) {
        if (parsed.areDefault && symbol != parsed.symbols.first()) {
            break; // Those are there for the keyboards that have them; nobody chose them.
        }
        keys.used.append(hotkeyOf(symbol));
        if (m_monitor->layout().codesOf(symbol).empty()) {
            keys.missing.append(keys.used.last().title);
        }
    }
    return keys;
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

std::optional<HotkeyControl::Key> EvdevHotkeyControl::suggestion() const
{
    for (const auto symbol : suggestedTriggerKeys()) {
        if (isOnKeyboard(symbol)) {
            return hotkeyOf(symbol);
        }
    }
    return std::nullopt;
}

bool EvdevHotkeyControl::isOnKeyboard(const QString &name) const
{
    return isOnKeyboard(TriggerKeyNames::parse({name}).symbols.first());
}

bool EvdevHotkeyControl::isOnKeyboard(quint32 keySymbol) const
{
    const auto codes = m_monitor->layout().codesOf(keySymbol);
    return std::any_of(codes.begin(), codes.end(),
                       [](int code) { return KeyboardCapabilities::anyKeyboardHas(code).value_or(true); });
}

} // namespace talmo
