#include "UI/Menu/MenuRow.h"

#include "UI/Accessibility/AccessibleName.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/Symbol.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace talmo {

namespace {

constexpr int sidePadding = 8;
constexpr int verticalPadding = 6;
constexpr int gap = 9;
constexpr qreal highlightRadius = 6;

int symbolSize()
{
    return Appearance::scaled(Symbol::rowSize);
}

} // namespace

MenuRow::MenuRow()
{
    setFlat(true);
    setFocusPolicy(Qt::StrongFocus);
    setFont(Appearance::font(Appearance::titleSize));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MenuRow::setContents(const QString &symbol, const QString &title, const QString &hint)
{
    m_symbol = symbol;
    m_hint = hint;
    // A plain “&” in a button's text would mark the next letter as its mnemonic.
    setText(QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
    nameAccessibly(*this, title);
    describeAccessibly(*this, hint);
    updateGeometry();
    update();
}

QSize MenuRow::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int hintWidth = m_hint.isEmpty() ? 0 : 2 * gap + metrics.horizontalAdvance(m_hint);
    return {2 * sidePadding + symbolSize() + gap + metrics.horizontalAdvance(accessibleName()) + hintWidth,
            metrics.height() + 2 * verticalPadding};
}

void MenuRow::enterEvent(QEnterEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    QPushButton::enterEvent(event);
}

void MenuRow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

void MenuRow::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isHighlighted = hasFocus() && isEnabled();
    if (isHighlighted) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isDown() ? palette().color(QPalette::Highlight).darker(115)
                                  : palette().color(QPalette::Highlight));
        painter.drawRoundedRect(rect(), highlightRadius, highlightRadius);
    }
    const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QColor text =
        isHighlighted ? palette().color(QPalette::HighlightedText) : palette().color(group, QPalette::WindowText);
    const QRect inner = rect().adjusted(sidePadding, 0, -sidePadding, 0);
    const int side = symbolSize();
    const QRect symbolArea(inner.left(), inner.top() + (inner.height() - side) / 2, side, side);
    Symbol::paint(painter, QStyle::visualRect(layoutDirection(), inner, symbolArea), m_symbol, text);
    painter.setFont(font());
    painter.setPen(text);
    const QRect titleArea = QStyle::visualRect(layoutDirection(), inner, inner.adjusted(side + gap, 0, 0, 0));
    const auto aligned = [this](Qt::Alignment edge) {
        return static_cast<int>(Qt::AlignVCenter | QStyle::visualAlignment(layoutDirection(), edge));
    };
    painter.drawText(titleArea, aligned(Qt::AlignLeft), accessibleName());
    painter.setPen(isHighlighted ? text : Appearance::secondary(palette()));
    painter.drawText(titleArea, aligned(Qt::AlignRight), m_hint);
}

} // namespace talmo
