#include "Platform/Linux/Keys/TriggerKeys.h"

#include "Base/Log.h"

#include <array>
#include <utility>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace talmo {

namespace {

const QList<quint32> usualKeys = {XKB_KEY_Control_R, XKB_KEY_XF86WakeUp, XKB_KEY_F13};

constexpr std::array<std::pair<quint32, const char *>, 15> knownNames = {{
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
}};

QString keyName(quint32 keySymbol)
{
    constexpr std::size_t longestName = 64;
    std::array<char, longestName> name{};
    xkb_keysym_get_name(keySymbol, name.data(), name.size());
    return QString::fromLatin1(name.data());
}

} // namespace

QList<quint32> triggerKeySymbols(const QStringList &names)
{
    QList<quint32> symbols;
    for (const auto &name : names) {
        const auto symbol = xkb_keysym_from_name(name.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE);
        if (symbol == XKB_KEY_NoSymbol) {
            generalLog().error("unknown key %@ in linux.standInKeys: ignored", {name});
        } else if (xkb_keysym_to_utf32(symbol) != 0) {
            generalLog().error("the key %@ in linux.standInKeys produces text: ignored", {name});
        } else if (!symbols.contains(symbol)) {
            symbols.append(symbol);
        }
    }
    return symbols.isEmpty() ? usualKeys : symbols;
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
    return keyName(keySymbol);
}

} // namespace talmo
