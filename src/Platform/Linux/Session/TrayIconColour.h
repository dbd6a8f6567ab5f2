#pragma once

#include "UI/Style/Appearance.h"
#include "UI/Style/Symbol.h"

#include <QColor>
#include <QList>
#include <QStringList>

#include <optional>

namespace talmo {

/// The colours in which an icon is seen on the desktop's bar: one on a bar whose background is known; a light and a
/// dark one on any other, of which each background leaves one to be seen.
///
/// `trayColours`: the numbers of the tray's colour property; empty if it has none. `ground`: the background of the
/// icon, if known. `desktops`: the session's desktop names. `scheme`: the colour scheme of the desktop's windows.
Symbol::Inks trayInks(const QList<quint32> &trayColours, const std::optional<QColor> &ground,
                      const QStringList &desktops, ColourScheme scheme);

} // namespace talmo
