#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace talmo {

/// The key symbols of the keys that stand in for fn, from their names as the X server knows them ("Control_R"). Right
/// Ctrl, the fn key where a laptop lets the system see it, and F13 where none is named. A name that is no key's, or
/// that of a key that types, is said in the log and left out.
QList<quint32> standInKeySymbols(const QStringList &names);

/// What people call a key: the first one of those above is the one that texts mention.
QString keyDisplayName(quint32 keySymbol);

} // namespace talmo
