#include "UI/Style/KeyCap.h"

#include "UI/Style/Appearance.h"

#include <QPainter>

namespace talmo {

KeyCap::KeyCap()
{
    setFont(Appearance::font(Appearance::detailSize, QFont::Medium));
    setTextFormat(Qt::PlainText);
    setContentsMargins(9, 3, 9, 4);
}

void KeyCap::paintEvent(QPaintEvent *event)
{
    constexpr qreal radius = 5;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Appearance::hairline(palette()), 1));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.end();
    QLabel::paintEvent(event);
}

} // namespace talmo
