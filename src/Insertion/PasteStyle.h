#pragma once

#include <QString>
#include <QStringList>

namespace talmo {

/// The shortcut by which a program pastes.
enum class PasteStyle {
    ControlV,
    /// Terminals: Ctrl+V belongs to the program that runs in them.
    ControlShiftV,
    /// Older terminals, which paste the primary selection.
    ShiftInsertPrimary,
    /// Programs in which Ctrl+V means something else and Shift+Insert pastes the clipboard.
    ShiftInsert,
};

/// The style of an application, by the names under which its windows are known: the two parts of WM_CLASS, or the
/// application id. Case-insensitive.
PasteStyle pasteStyleFor(const QString &instanceName, const QString &className);

/// The user's shortcut for this style, such as "Ctrl+V".
QString shortcutName(PasteStyle style);

/// The shortcuts of all styles.
QStringList shortcutNames();

/// Whether a program copies the clipboard into another machine or system whenever it changes, and pastes that copy. By
/// the same names.
bool importsClipboard(const QString &instanceName, const QString &className);

} // namespace talmo
