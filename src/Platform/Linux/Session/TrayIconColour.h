#pragma once

#include "UI/Style/Appearance.h"
#include "UI/Style/Symbol.h"

#include <QColor>
#include <QList>
#include <QStringList>

#include <optional>

namespace talmo {

/// The colours in which an icon is legible on the desktop's bar: one if the bar's background is known, otherwise a
/// light and a dark one, so that one of them shows on any background.
///
/// `trayColours`: the numbers of the tray's colour property; empty if it has none. `ground`: the background of the
/// icon, if known. `desktops`: the session's desktop names. `scheme`: the colour scheme of the desktop's windows.
Symbol::Inks trayInks(const QList<quint32> &trayColours, const std::optional<QColor> &ground,
                      const QStringList &desktops, ColourScheme scheme);

} // namespace talmo
