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

constexpr float selectedStrength = 0.10F;
constexpr float hoveredStrength = 0.05F;

/// What the selected tab looks like: the window's colour with a little of its text's.
QColor selectedGround(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const auto mixed = [](float ground, float ink) { return ground + selectedStrength * (ink - ground); };
    return QColor::fromRgbF(mixed(window.redF(), text.redF()), mixed(window.greenF(), text.greenF()),
                            mixed(window.blueF(), text.blueF()));
}

/// The desktop's accent where it can be read.
QColor selectedInk(const QPalette &palette)
{
    if (Appearance::isDark(palette)) {
        return palette.color(QPalette::WindowText);
    }
    return Appearance::legible(palette.color(QPalette::Highlight), selectedGround(palette), Appearance::textContrast);
}

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
        ground.setAlphaF(isSelected ? selectedStrength : hoveredStrength);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        painter.drawRoundedRect(area, radius, radius);
    }
    if (isSelected && hasFocus()) {
        const QColor ring = Appearance::legible(palette().color(QPalette::Highlight), palette().color(QPalette::Window),
                                                Appearance::shapeContrast);
        painter.setPen(QPen(ring, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(area).adjusted(1, 1, -1, -1), radius, radius);
    }
    const QColor ink = isSelected ? selectedInk(palette()) : Appearance::secondary(palette());
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
