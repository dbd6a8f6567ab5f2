#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

#include <optional>

class QPainter;
class QRectF;

namespace talmo {

/// Talmo's own single-colour drawings, by name: "mic.circle", "gearshape" and so on.
namespace Symbol {

/// The side of the square that symbols beside text are drawn in, in logical pixels.
inline constexpr int rowSize = 16;

bool exists(const QString &name);

/// Draws nothing if there is no symbol of that name.
void paint(QPainter &painter, const QRectF &square, const QString &name, const QColor &colour);

/// `size` is in logical pixels, `ratio` in device pixels per logical pixel.
QPixmap pixmap(const QString &name, int size, const QColor &colour, qreal ratio = 1);

/// In all the sizes at which trays and views show icons.
QIcon icon(const QString &name, const QColor &colour);

/// The colour of a symbol, and that of a disc behind it, if it has one.
struct Inks {
    QColor ink;
    std::optional<QColor> disc;
};
/// A symbol with a disc has to be round.
QIcon icon(const QString &name, const Inks &inks);

} // namespace Symbol

} // namespace talmo
