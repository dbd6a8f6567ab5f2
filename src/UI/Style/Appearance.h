#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace talmo {

/// Whether the desktop's surfaces are light or dark.
enum class ColourScheme { Light, Dark };

/// Fonts and colours that the views share. Sizes are those at an ordinary system font, in logical pixels; a larger
/// system font enlarges them.
namespace Appearance {

inline constexpr int titleSize = 13;
inline constexpr int detailSize = 12;
inline constexpr int captionSize = 11;

/// The scale of everything that depends on the text size, relative to an ordinary system font; never below 1, which
/// would make captions unreadable.
qreal textScale();
/// Converts a length that is given for an ordinary system font, such as a title's size, to the current one.
int scaled(int length);
/// `size`: at an ordinary system font.
QFont font(int size, QFont::Weight weight = QFont::Normal);

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

/// The colour of a switch's frame, which must be visible on every surface.
QColor outline(const QPalette &palette);

/// From 1, the same lightness, to 21, black on white. Both colours are opaque.
qreal contrast(const QColor &one, const QColor &other);
/// The contrast that text needs, and that shapes need.
inline constexpr qreal textContrast = 4.5;
inline constexpr qreal shapeContrast = 3;
/// The colour itself, or the one nearest to it that has this contrast on the ground.
QColor legible(const QColor &colour, const QColor &ground, qreal wanted);

/// For desktops that name a colour scheme but set no palette for it.
QPalette palette(ColourScheme scheme);
/// A desktop's palette, with its links and selected rows as legible as they have to be.
QPalette legible(QPalette palette);

} // namespace Appearance

} // namespace talmo
