#include "UI/Style/LevelBar.h"

#include "UI/Style/Appearance.h"
#include "UI/Style/Wording.h"

#include <QPainter>

#include <cmath>

namespace talmo {

namespace {

constexpr int segments = 24;
constexpr int barHeight = 10;
constexpr int gap = 2;
constexpr int idealWidth = 220;
constexpr qreal radius = 2;

} // namespace

LevelBar::LevelBar()
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Microphone level")));
}

QSize LevelBar::sizeHint() const
{
    return {idealWidth, barHeight};
}

void LevelBar::setLevel(double level)
{
    m_level = level;
    update();
}

void LevelBar::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor empty = Appearance::secondary(palette());
    empty.setAlphaF(0.25F);
    const int lit = static_cast<int>(std::ceil(m_level * segments));
    const qreal step = qreal(width() + gap) / segments;
    for (int index = 0; index < segments; ++index) {
        const int place = isRightToLeft() ? segments - 1 - index : index;
        painter.setBrush(index < lit ? Appearance::green(palette()) : empty);
        painter.drawRoundedRect(QRectF(place * step, 0, step - gap, height()), radius, radius);
    }
}

} // namespace talmo
