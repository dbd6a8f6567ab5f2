#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace talmo {

/// The names of trigger keys, as the settings file has them.
struct TriggerKeyNames {
    /// In their order, each once. Without any: Right Ctrl, the fn key on laptops that pass it to the system, and F13.
    QList<quint32> symbols;
    bool areDefault = false;
    /// Names that no key has.
    QStringList unknown;
    /// Keys that type a character, and so cannot be held.
    QStringList typing;

    static TriggerKeyNames parse(const QStringList &names);
};

/// The symbols alone; names that cannot be used are logged.
QList<quint32> triggerKeySymbols(const QStringList &names);

/// The name of a symbol as the settings file has it: "Control_R".
QString keyName(quint32 keySymbol);
/// Those of triggerKeySymbols().
QStringList triggerKeyNames(const QStringList &names);
/// The name on a key cap. User-visible texts mention the first trigger key.
QString keyDisplayName(quint32 keySymbol);

/// Whether pressing the key types a character.
bool producesText(quint32 keySymbol);
/// Whether the key is held together with others, or locks something. Such a key is shared with the other programs; any
/// other trigger key is kept from them, since it would act in the application in front.
bool isModifierKey(quint32 keySymbol);

/// The kernel's code of F13 to F24, which the usual layouts give other symbols; nullopt for any other key.
std::optional<int> functionKeyCode(quint32 keySymbol);
/// The reverse: the symbol printed on such a key.
std::optional<quint32> functionKeySymbol(int kernelCode);

/// For keyboards without Right Ctrl: keys that most have, and few programs need, the best first.
QList<quint32> suggestedTriggerKeys();

} // namespace talmo
