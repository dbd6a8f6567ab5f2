#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

namespace talmo {

/// Talmo's own drawings, each in one colour, by name: "mic.circle", "gearshape" and so on.
namespace Symbol {

/// The side of the square in which symbols are drawn beside text, in logical pixels.
inline constexpr int rowSize = 16;

bool exists(const QString &name);

/// Nothing for a name that does not exist.
void paint(QPainter &painter, const QRectF &square, const QString &name, const QColor &colour);

/// `size` in logical pixels, with `ratio` device pixels each.
QPixmap pixmap(const QString &name, int size, const QColor &colour, qreal ratio = 1);

/// In all the sizes at which trays and views show icons.
QIcon icon(const QString &name, const QColor &colour);

} // namespace Symbol

} // namespace talmo
