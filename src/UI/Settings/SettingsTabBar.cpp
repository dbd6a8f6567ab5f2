#include "UI/Settings/SettingsTabBar.h"

#include "UI/Style/Appearance.h"
#include "UI/Style/Symbol.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

constexpr int symbolSize = 20;
constexpr int padding = 6;
constexpr int gap = 4;
constexpr int smallestWidth = 78;
constexpr qreal radius = 8;

} // namespace

SettingsTabBar::SettingsTabBar()
{
    setFont(Appearance::font(Appearance::captionSize, QFont::Medium));
    setDrawBase(false);
    setExpanding(false);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

int SettingsTabBar::addSymbolTab(const QString &symbol, const QString &title)
{
    const int index = addTab(title);
    setTabData(index, symbol);
    return index;
}

QSize SettingsTabBar::tabSizeHint(int index) const
{
    const QFontMetrics metrics(font());
    return {std::max(smallestWidth, metrics.horizontalAdvance(tabText(index)) + 4 * padding),
            Appearance::scaled(symbolSize) + gap + metrics.height() + 2 * padding};
}

void SettingsTabBar::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int index = 0; index < count(); ++index) {
        paintTab(painter, index);
    }
}

void SettingsTabBar::paintTab(QPainter &painter, int index) const
{
    const bool isSelected = index == currentIndex();
    const QRect area = tabRect(index).adjusted(2, 0, -2, 0);
    if (isSelected || index == m_hovered) {
        QColor ground = palette().color(QPalette::WindowText);
        constexpr float selectedStrength = 0.10F;
        constexpr float hoveredStrength = 0.05F;
        ground.setAlphaF(isSelected ? selectedStrength : hoveredStrength);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        painter.drawRoundedRect(area, radius, radius);
    }
    if (isSelected && hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(area).adjusted(1, 1, -1, -1), radius, radius);
    }
    const QColor ink = isSelected
                           ? palette().color(Appearance::isDark(palette()) ? QPalette::WindowText : QPalette::Highlight)
                           : Appearance::secondary(palette());
    const int side = Appearance::scaled(symbolSize);
    Symbol::paint(painter, QRectF(area.x() + (area.width() - side) / 2.0, area.y() + padding, side, side),
                  symbol(index), ink);
    painter.setPen(ink);
    painter.drawText(area.adjusted(0, padding + side + gap, 0, 0), Qt::AlignHCenter | Qt::AlignTop, tabText(index));
}

void SettingsTabBar::mouseMoveEvent(QMouseEvent *event)
{
    const int hovered = tabAt(event->position().toPoint());
    if (std::exchange(m_hovered, hovered) != hovered) {
        update();
    }
    QTabBar::mouseMoveEvent(event);
}

void SettingsTabBar::leaveEvent(QEvent *event)
{
    m_hovered = -1;
    update();
    QTabBar::leaveEvent(event);
}

} // namespace talmo
