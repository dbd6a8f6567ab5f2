#include "UI/Style/ToggleStyle.h"

#include "UI/Style/Appearance.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QStyleOption>

namespace talmo {

namespace {

constexpr qreal radius = 3;

/// In a box whose sides are 1.
QPainterPath checkMark(const QRectF &box)
{
    const auto place = [&box](qreal x, qreal y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    QPainterPath mark(place(0.24, 0.53));
    mark.lineTo(place(0.43, 0.72));
    mark.lineTo(place(0.77, 0.31));
    return mark;
}

void paintBox(QPainter &painter, const QRectF &box, const QPalette &palette, QStyle::State state)
{
    const bool isOn = state.testFlag(QStyle::State_On);
    const bool isEnabled = state.testFlag(QStyle::State_Enabled);
    const QColor accent = palette.color(QPalette::Highlight);
    const QColor ground = isOn ? accent : palette.color(QPalette::Base);
    constexpr qreal dimmed = 0.45;
    painter.setOpacity(isEnabled ? 1 : dimmed);
    // The frame stays when the box is on: the accent of a desktop may be hardly darker than its window.
    painter.setPen(QPen(Appearance::outline(palette), 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    if (isOn) {
        constexpr qreal thickness = 0.13;
        const QColor ink = palette.color(QPalette::HighlightedText);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(ink, thickness * box.width(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(checkMark(box));
    }
}

} // namespace

ToggleStyle *ToggleStyle::shared()
{
    static QPointer<ToggleStyle> style;
    if (!style) {
        style = new ToggleStyle;
        style->setParent(QApplication::instance());
    }
    return style;
}

int ToggleStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const int length = QProxyStyle::pixelMetric(metric, option, widget);
    const bool isOfBox = metric == PM_IndicatorWidth || metric == PM_IndicatorHeight;
    return isOfBox ? Appearance::scaled(length) : length;
}

void ToggleStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    if (element != PE_IndicatorCheckBox) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintBox(*painter, option->rect, option->palette, option->state);
    painter->restore();
}

} // namespace talmo
