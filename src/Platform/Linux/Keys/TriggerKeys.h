#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace talmo {

/// The key symbols of the trigger keys that stand in for fn, from their X key names ("Control_R"). If there are none:
/// Right Ctrl, the fn key on laptops that pass it to the system, and F13. Unknown names and keys that produce text are
/// logged and ignored.
QList<quint32> triggerKeySymbols(const QStringList &names);

/// The X key names of the same keys.
QStringList triggerKeyNames(const QStringList &names);

/// The name on a key cap. User-visible texts mention the first of the keys above.
QString keyDisplayName(quint32 keySymbol);

} // namespace talmo
