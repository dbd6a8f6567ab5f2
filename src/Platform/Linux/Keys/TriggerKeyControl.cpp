#include "Platform/Linux/Keys/TriggerKeyControl.h"

#include "Platform/Linux/Keys/CapturedKey.h"
#include "Platform/Linux/Keys/KeyboardCapabilities.h"
#include "Platform/Linux/Keys/TriggerKeys.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

bool isOnAnyKeyboard(int code)
{
    return KeyboardCapabilities::anyKeyboardHas(code).value_or(true);
}

} // namespace

TriggerKeyControl::TriggerKeyControl(QStringList names)
    : m_names(std::move(names))
{
}

void TriggerKeyControl::setKeys(const QStringList &names)
{
    m_names = names;
    setTriggerKeys(triggerKeySymbols(names));
}

HotkeyControl::Keys TriggerKeyControl::keys() const
{
    const auto parsed = TriggerKeyNames::parse(m_names);
    Keys keys;
    keys.unknown = parsed.unknown;
    keys.typing = parsed.typing;
    for (const auto symbol : parsed.symbols) {
        if (parsed.areDefault && symbol != parsed.symbols.first()) {
            break; // The other defaults only serve keyboards that have them; the user has not chosen them.
        }
        const Key key = hotkeyOf(symbol);
        const auto codes = codesOf(symbol);
        keys.used.append(key);
        if (codes.empty()) {
            keys.missing.append(key.title);
        }
        if (std::any_of(codes.begin(), codes.end(), [this](int code) { return isRefused(code); })) {
            keys.taken.append(key.title);
        }
    }
    return keys;
}

std::optional<HotkeyControl::Key> TriggerKeyControl::suggestion() const
{
    for (const auto symbol : suggestedTriggerKeys()) {
        for (const int code : codesOf(symbol)) {
            if (isOnAnyKeyboard(code) && isFree(code)) {
                return hotkeyOf(symbol);
            }
        }
    }
    return std::nullopt;
}

bool TriggerKeyControl::isOnKeyboard(const QString &name) const
{
    const auto codes = codesOf(TriggerKeyNames::parse({name}).symbols.first());
    return std::any_of(codes.begin(), codes.end(), &isOnAnyKeyboard);
}

} // namespace talmo
