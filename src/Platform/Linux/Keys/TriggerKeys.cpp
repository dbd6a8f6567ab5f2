#include "Platform/Linux/Keys/TriggerKeys.h"

#include "Base/Log.h"

#include <array>
#include <utility>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace talmo {

namespace {

const QList<quint32> usualKeys = {XKB_KEY_Control_R, XKB_KEY_XF86WakeUp, XKB_KEY_F13};

/// KEY_F13.
constexpr int firstCode = 183;

constexpr std::array<std::pair<quint32, const char *>, 17> knownNames = {{
    {XKB_KEY_Control_L, QT_TRANSLATE_NOOP("Talmo", "Left Ctrl")},
    {XKB_KEY_Control_R, QT_TRANSLATE_NOOP("Talmo", "Right Ctrl")},
    {XKB_KEY_Shift_L, QT_TRANSLATE_NOOP("Talmo", "Left Shift")},
    {XKB_KEY_Shift_R, QT_TRANSLATE_NOOP("Talmo", "Right Shift")},
    {XKB_KEY_Alt_L, QT_TRANSLATE_NOOP("Talmo", "Left Alt")},
    {XKB_KEY_Alt_R, QT_TRANSLATE_NOOP("Talmo", "Right Alt")},
    {XKB_KEY_ISO_Level3_Shift, QT_TRANSLATE_NOOP("Talmo", "AltGr")},
    {XKB_KEY_Super_L, QT_TRANSLATE_NOOP("Talmo", "Left Super")},
    {XKB_KEY_Super_R, QT_TRANSLATE_NOOP("Talmo", "Right Super")},
    {XKB_KEY_Caps_Lock, QT_TRANSLATE_NOOP("Talmo", "Caps Lock")},
    {XKB_KEY_Scroll_Lock, QT_TRANSLATE_NOOP("Talmo", "Scroll Lock")},
    {XKB_KEY_Num_Lock, QT_TRANSLATE_NOOP("Talmo", "Num Lock")},
    {XKB_KEY_Menu, QT_TRANSLATE_NOOP("Talmo", "Menu")},
    {XKB_KEY_Print, QT_TRANSLATE_NOOP("Talmo", "Print Screen")},
    {XKB_KEY_XF86WakeUp, QT_TRANSLATE_NOOP("Talmo", "Fn")},
    {XKB_KEY_Prior, QT_TRANSLATE_NOOP("Talmo", "Page Up")},
    {XKB_KEY_Next, QT_TRANSLATE_NOOP("Talmo", "Page Down")},
}};

} // namespace

TriggerKeyNames TriggerKeyNames::parse(const QStringList &names)
{
    TriggerKeyNames parsed;
    for (const auto &name : names) {
        const auto symbol = xkb_keysym_from_name(name.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE);
        if (symbol == XKB_KEY_NoSymbol) {
            parsed.unknown.append(name);
        } else if (producesText(symbol)) {
            parsed.typing.append(name);
        } else if (!parsed.symbols.contains(symbol)) {
            parsed.symbols.append(symbol);
        }
    }
    parsed.areDefault = parsed.symbols.isEmpty();
    if (parsed.areDefault) {
        parsed.symbols = usualKeys;
    }
    return parsed;
}

QList<quint32> triggerKeySymbols(const QStringList &names)
{
    const auto parsed = TriggerKeyNames::parse(names);
    for (const auto &name : parsed.unknown) {
        generalLog().error("unknown key %@ in linux.standInKeys: ignored", {name});
    }
    for (const auto &name : parsed.typing) {
        generalLog().error("the key %@ in linux.standInKeys produces text: ignored", {name});
    }
    return parsed.symbols;
}

bool producesText(quint32 keySymbol)
{
    return xkb_keysym_to_utf32(keySymbol) != 0;
}

bool isModifierKey(quint32 keySymbol)
{
    const bool isClassic = keySymbol >= XKB_KEY_Shift_L && keySymbol <= XKB_KEY_Hyper_R; // With Caps Lock.
    const bool isGroup = keySymbol >= XKB_KEY_ISO_Lock && keySymbol <= XKB_KEY_ISO_Level5_Lock;
    return isClassic || isGroup || keySymbol == XKB_KEY_Mode_switch || keySymbol == XKB_KEY_Num_Lock ||
           keySymbol == XKB_KEY_Scroll_Lock;
}

std::optional<int> functionKeyCode(quint32 keySymbol)
{
    const bool isOne = keySymbol >= XKB_KEY_F13 && keySymbol <= XKB_KEY_F24;
    return isOne ? std::optional(firstCode + static_cast<int>(keySymbol - XKB_KEY_F13)) : std::nullopt;
}

std::optional<quint32> functionKeySymbol(int kernelCode)
{
    const bool isOne = kernelCode >= firstCode && kernelCode <= firstCode + (XKB_KEY_F24 - XKB_KEY_F13);
    return isOne ? std::optional<quint32>(XKB_KEY_F13 + static_cast<quint32>(kernelCode - firstCode)) : std::nullopt;
}

QList<quint32> suggestedTriggerKeys()
{
    return {XKB_KEY_F9, XKB_KEY_F8, XKB_KEY_F10, XKB_KEY_F7, XKB_KEY_Pause};
}

QStringList triggerKeyNames(const QStringList &names)
{
    QStringList keyNames;
    for (const auto symbol : triggerKeySymbols(names)) {
        keyNames.append(keyName(symbol));
    }
    return keyNames;
}

QString keyDisplayName(quint32 keySymbol)
{
    for (const auto &[symbol, name] : knownNames) {
        if (symbol == keySymbol) {
            return QString::fromLatin1(name);
        }
    }
    const QString name = keyName(keySymbol);
    const QString vendor = QStringLiteral("XF86");
    return name.startsWith(vendor) ? name.mid(vendor.size()) : name;
}

QString keyName(quint32 keySymbol)
{
    constexpr std::size_t longestName = 64;
    std::array<char, longestName> name{};
    xkb_keysym_get_name(keySymbol, name.data(), name.size());
    return QString::fromLatin1(name.data());
}

} // namespace talmo
