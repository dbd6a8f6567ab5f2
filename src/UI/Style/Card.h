#pragma once

#include <QPalette>
#include <QRect>
#include <QRegion>

class QPainter;

namespace talmo {

/// The rounded, translucent surface of the overlay and the menu.
namespace Card {

inline constexpr int cornerRadius = 14;
/// The width of the shadow around the card.
inline constexpr int shadowMargin = 24;

/// `isTranslucent`: whether the background may shine through; otherwise the surface is solid and has no shadow.
void paint(QPainter &painter, const QRect &card, const QPalette &palette, bool isTranslucent);

/// The card's shape for a screen without translucency.
QRegion shape(const QRect &card);

} // namespace Card

} // namespace talmo
