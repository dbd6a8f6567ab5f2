#include "UI/Style/Card.h"

#include "UI/Style/Appearance.h"

#include <QBitmap>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace talmo::Card {

namespace {

constexpr qreal shadowDrop = 4;

/// A rounded rectangle whose corners start to curve gradually, unlike circular arcs.
QPainterPath outline(const QRectF &rect)
{
    constexpr qreal exponent = 1.12; // Stretches the corner along the edges…
    constexpr qreal handle = 0.36;   // …and makes the curve leave them gradually.
    const qreal reach = std::min({cornerRadius * exponent, rect.width() / 2, rect.height() / 2});
    const qreal near = reach * handle;
    QPainterPath path(QPointF(rect.left() + reach, rect.top()));
    path.lineTo(rect.right() - reach, rect.top());
    path.cubicTo(rect.right() - near, rect.top(), rect.right(), rect.top() + near, rect.right(), rect.top() + reach);
    path.lineTo(rect.right(), rect.bottom() - reach);
    path.cubicTo(rect.right(), rect.bottom() - near, rect.right() - near, rect.bottom(), rect.right() - reach,
                 rect.bottom());
    path.lineTo(rect.left() + reach, rect.bottom());
    path.cubicTo(rect.left() + near, rect.bottom(), rect.left(), rect.bottom() - near, rect.left(),
                 rect.bottom() - reach);
    path.lineTo(rect.left(), rect.top() + reach);
    path.cubicTo(rect.left(), rect.top() + near, rect.left() + near, rect.top(), rect.left() + reach, rect.top());
    path.closeSubpath();
    return path;
}

/// The opacity of the shadow at this distance from the card's edge, negative inside.
qreal shadowStrength(qreal distance)
{
    constexpr qreal darkest = 0.34;
    constexpr qreal softness = 8;
    return darkest * 0.5 * std::erfc(distance / softness);
}

/// A corner of the shadow and the middle pixel it is stretched from, for one device pixel ratio.
QImage makeShadow(qreal ratio)
{
    const int reach = qRound((shadowMargin + cornerRadius * 2) * ratio);
    QImage image(2 * reach + 1, 2 * reach + 1, QImage::Format_ARGB32_Premultiplied);
    const qreal radius = cornerRadius * ratio;
    const qreal straight = reach - shadowMargin * ratio - radius;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const qreal beyondX = std::abs(x - reach) - straight;
            const qreal beyondY = std::abs(y - reach) - straight;
            const qreal outside = std::hypot(std::max(beyondX, 0.0), std::max(beyondY, 0.0));
            const qreal distance = (outside + std::min(std::max(beyondX, beyondY), 0.0) - radius) / ratio;
            image.setPixel(x, y, qRgba(0, 0, 0, qRound(255 * shadowStrength(distance))));
        }
    }
    image.setDevicePixelRatio(ratio);
    return image;
}

const QImage &shadow(qreal ratio)
{
    static QHash<int, QImage> made;
    constexpr qreal steps = 64;
    auto &image = made[qRound(ratio * steps)];
    if (image.isNull()) {
        image = makeShadow(ratio);
    }
    return image;
}

/// Draws the corners unscaled and stretches the edges and the middle.
void paintShadow(QPainter &painter, const QRect &card)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QImage &image = shadow(ratio);
    const int side = image.width();
    const int corner = side / 2;
    const QRectF area =
        QRectF(card).adjusted(-shadowMargin, -shadowMargin, shadowMargin, shadowMargin).translated(0, shadowDrop);
    const qreal part = corner / ratio;
    const qreal partX = std::min(part, area.width() / 2);
    const qreal partY = std::min(part, area.height() / 2);
    const qreal xs[] = {area.left(), area.left() + partX, area.right() - partX, area.right()};
    const qreal ys[] = {area.top(), area.top() + partY, area.bottom() - partY, area.bottom()};
    const qreal sourceX[] = {0, partX * ratio, side - partX * ratio, static_cast<qreal>(side)};
    const qreal sourceY[] = {0, partY * ratio, side - partY * ratio, static_cast<qreal>(side)};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            painter.drawImage(
                QRectF(QPointF(xs[column], ys[row]), QPointF(xs[column + 1], ys[row + 1])), image,
                QRectF(QPointF(sourceX[column], sourceY[row]), QPointF(sourceX[column + 1], sourceY[row + 1])));
        }
    }
}

} // namespace

void paint(QPainter &painter, const QRect &card, const QPalette &palette, bool isTranslucent)
{
    constexpr qreal surfaceStrength = 0.9;
    constexpr qreal borderStrength = 0.08;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QColor surface = palette.color(QPalette::Window);
    const QPainterPath edge = outline(card);
    if (isTranslucent) {
        painter.save();
        // Only around the card: underneath, it would show through.
        QPainterPath around;
        around.addRect(QRectF(card).adjusted(-shadowMargin, -shadowMargin, shadowMargin, shadowMargin + shadowDrop));
        painter.setClipPath(around.subtracted(edge));
        paintShadow(painter, card);
        painter.restore();
        surface.setAlphaF(static_cast<float>(surfaceStrength));
    }
    if (isTranslucent) {
        painter.fillPath(edge, surface);
    } else {
        // The window has no half-covered pixels: what showed through at the corners would be black.
        painter.save();
        painter.setClipRegion(Card::shape(card), Qt::IntersectClip);
        painter.fillRect(card, surface);
        painter.restore();
    }
    QColor border = palette.color(QPalette::WindowText);
    border.setAlphaF(static_cast<float>(borderStrength));
    painter.strokePath(outline(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5)), QPen(border, 1));
    painter.restore();
}

QRegion shape(const QRect &card)
{
    QBitmap bitmap(card.size());
    bitmap.clear();
    QPainter painter(&bitmap);
    painter.fillPath(outline(QRectF(QPointF(0, 0), card.size())), Qt::color1);
    painter.end();
    return QRegion(bitmap).translated(card.topLeft());
}

} // namespace talmo::Card
