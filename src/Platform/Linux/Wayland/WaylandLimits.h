#pragma once

#include "Platform/Desktop.h"

namespace talmo::WaylandLimits {

/// The compositor does not report keys to programs, and the keyboards cannot be read.
inline constexpr DesktopLimit unseenKeys = {
    QT_TRANSLATE_NOOP("Talmo", "Dictation key"),
    QT_TRANSLATE_NOOP("Talmo", "This desktop may not tell Talmo about keys while a Wayland window is in front."),
    QT_TRANSLATE_NOOP("Talmo", "Bind a key to “talmoctl toggle” in the desktop's keyboard settings.")};
/// On KDE.
inline constexpr DesktopLimit takenKey = {
    QT_TRANSLATE_NOOP("Talmo", "Dictation key"),
    QT_TRANSLATE_NOOP("Talmo", "Another program's shortcut is the dictation key already."),
    QT_TRANSLATE_NOOP("Talmo", "Remove that shortcut in KDE's settings, then start Talmo again.")};
/// The compositor does not let programs type, or has no clipboard for programs without a window.
inline constexpr DesktopLimit untypedText = {
    QT_TRANSLATE_NOOP("Talmo", "Inserting text"),
    QT_TRANSLATE_NOOP("Talmo", "This desktop does not let Talmo type into Wayland windows."),
    QT_TRANSLATE_NOOP("Talmo", "After a dictation, paste the text with Ctrl+V.")};
/// The same, where the user can change it.
inline constexpr DesktopLimit unallowedText = {
    QT_TRANSLATE_NOOP("Talmo", "Inserting text"),
    QT_TRANSLATE_NOOP("Talmo", "This desktop lets Talmo type into Wayland windows only if you allow it."),
    QT_TRANSLATE_NOOP("Talmo", "Allow it in the settings, under Privacy. Until then, paste the text with Ctrl+V.")};

} // namespace talmo::WaylandLimits
