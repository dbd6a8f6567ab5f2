#pragma once

#include <QPalette>
#include <QRect>
#include <QRegion>

class QPainter;

namespace talmo {

/// The rounded, translucent surface on which the overlay and the menu lie.
namespace Card {

inline constexpr int cornerRadius = 14;
/// How far the shadow reaches around the card.
inline constexpr int shadowMargin = 24;

/// `isTranslucent`: whether what is behind may shine through; without it the surface is solid and has no shadow.
void paint(QPainter &painter, const QRect &card, const QPalette &palette, bool isTranslucent);

/// The card's shape for a screen that knows no translucency.
QRegion shape(const QRect &card);

} // namespace Card

} // namespace talmo
