#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace talmo {

/// Whether the desktop's surfaces are light or dark.
enum class ColourScheme { Light, Dark };

/// Fonts and colours that the views share. Sizes of fonts are in logical pixels, as all sizes in the views are.
namespace Appearance {

inline constexpr int titleSize = 13;
inline constexpr int detailSize = 12;
inline constexpr int captionSize = 11;

QFont font(int pixelSize, QFont::Weight weight = QFont::Normal);

/// Judged by the palette's windows.
bool isDark(const QPalette &palette);
ColourScheme scheme(const QPalette &palette);
/// The dimmed foreground for what is said second.
QColor secondary(const QPalette &palette);
QColor hairline(const QPalette &palette);
/// A surface a little apart from the window's.
QColor groupSurface(const QPalette &palette);
/// For warnings and for what is as it should be; legible on the palette's windows.
QColor orange(const QPalette &palette);
QColor green(const QPalette &palette);

/// For desktops that say which scheme they want and set no palette for it.
QPalette palette(ColourScheme scheme);

} // namespace Appearance

} // namespace talmo
