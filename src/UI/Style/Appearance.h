#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace talmo {

/// Whether the desktop's surfaces are light or dark.
enum class ColourScheme { Light, Dark };

/// Fonts and colours that the views share. Font sizes are in logical pixels, like all sizes in the views.
namespace Appearance {

inline constexpr int titleSize = 13;
inline constexpr int detailSize = 12;
inline constexpr int captionSize = 11;

QFont font(int pixelSize, QFont::Weight weight = QFont::Normal);

/// Judged by the palette's window colour.
bool isDark(const QPalette &palette);
ColourScheme scheme(const QPalette &palette);
/// A dimmed foreground for secondary text.
QColor secondary(const QPalette &palette);
QColor hairline(const QPalette &palette);
/// A surface slightly set off from the window's.
QColor groupSurface(const QPalette &palette);
/// For warnings and for success; legible on the palette's window colour.
QColor orange(const QPalette &palette);
QColor green(const QPalette &palette);

/// For desktops that name a colour scheme but set no palette for it.
QPalette palette(ColourScheme scheme);

} // namespace Appearance

} // namespace talmo
