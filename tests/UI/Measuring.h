#pragma once

#include "UI/Style/Appearance.h"

#include <QImage>
#include <QWidget>

#include <algorithm>

namespace talmo::test {

/// The view on its window's colour, so large that its thinnest strokes fill whole pixels.
inline QImage magnified(QWidget &view, int times = 4)
{
    QImage image(view.size() * times, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(times);
    image.fill(view.palette().color(QPalette::Window));
    view.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// The largest contrast of any pixel within the area, in pixels of the image, with the ground.
inline qreal largestContrast(const QImage &image, const QColor &ground, const QRect &area)
{
    qreal largest = 1;
    const QRect inside = area.intersected(image.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            largest = std::max(largest, Appearance::contrast(image.pixelColor(x, y), ground));
        }
    }
    return largest;
}

inline qreal largestContrast(const QImage &image, const QColor &ground)
{
    return largestContrast(image, ground, image.rect());
}

/// That of the child's area, in a picture magnified as often as `times`.
inline QRect areaIn(const QWidget &view, const QWidget &child, int times = 4)
{
    return {child.mapTo(&view, QPoint(0, 0)) * times, child.size() * times};
}

} // namespace talmo::test
