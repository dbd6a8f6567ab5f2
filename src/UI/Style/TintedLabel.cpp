#include "UI/Style/TintedLabel.h"

#include "UI/Style/Appearance.h"

#include <QPainter>
#include <QStyle>

#include <utility>

namespace talmo {

TintedLabel::TintedLabel(const QFont &font, Colour colour)
    : m_colour(std::move(colour))
{
    setFont(font);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
}

TintedLabel *TintedLabel::caption(const QString &text)
{
    auto *label = new TintedLabel(Appearance::font(Appearance::captionSize), &Appearance::secondary);
    label->setText(text);
    return label;
}

void TintedLabel::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    QPalette tinted = palette();
    tinted.setColor(QPalette::WindowText, m_colour(tinted));
    const auto flags = QStyle::visualAlignment(layoutDirection(), alignment()) | Qt::TextWordWrap;
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(flags), tinted, isEnabled(), text(),
                          QPalette::WindowText);
}

} // namespace talmo
