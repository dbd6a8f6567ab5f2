#pragma once

#include "UI/Style/Appearance.h"

#include <QColor>
#include <QList>
#include <QStringList>

#include <optional>

namespace talmo {

/// The colour in which an icon shows on the desktop's bar.
///
/// `trayColours`: what the tray itself says, as the numbers of its property; empty when it says nothing. `ground`: what
/// is seen behind the icon, where that can be known. `desktops`: the session's names for itself. `scheme`: that of the
/// desktop's windows.
QColor trayInk(const QList<quint32> &trayColours, const std::optional<QColor> &ground, const QStringList &desktops,
               ColourScheme scheme);

} // namespace talmo
