#pragma once

#include "UI/Style/Appearance.h"

#include <QColor>
#include <QList>
#include <QStringList>

#include <optional>

namespace talmo {

/// The colour in which an icon is legible on the desktop's bar.
///
/// `trayColours`: the numbers of the tray's colour property; empty if it has none. `ground`: the background of the
/// icon, if known. `desktops`: the session's desktop names. `scheme`: the colour scheme of the desktop's windows.
QColor trayInk(const QList<quint32> &trayColours, const std::optional<QColor> &ground, const QStringList &desktops,
               ColourScheme scheme);

} // namespace talmo
