#include "UI/Style/BriefText.h"

#include "UI/Style/Appearance.h"
#include "UI/Style/Wording.h"

#include <QFontMetrics>
#include <QPushButton>
#include <QTextLayout>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

QString firstLines(const QString &text, const QFont &font, int width, int mostLines)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    qsizetype lastStart = 0;
    int count = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lastStart = ++count == mostLines ? line.textStart() : lastStart;
    }
    layout.endLayout();
    if (count <= mostLines) {
        return text;
    }
    return text.left(lastStart) + QFontMetrics(font).elidedText(text.mid(lastStart), Qt::ElideRight, width);
}

BriefText::BriefText(const QFont &font, TintedLabel::Colour colour, int width)
    : m_label(new TintedLabel(font, std::move(colour))),
      m_details(new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Details")))),
      m_width(width)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(m_label);
    m_details->setFont(Appearance::font(Appearance::detailSize));
    column->addWidget(m_details, 0, Qt::AlignLeft);
    connect(m_details, &QPushButton::clicked, this, [this] {
        setWhole(true);
        if (m_onSizeChanged) {
            m_onSizeChanged();
        }
    });
    showText();
}

void BriefText::setText(const QString &text)
{
    if (std::exchange(m_text, text) != text) {
        m_isWhole = false;
        showText();
    }
}

void BriefText::setWhole(bool isWhole)
{
    if (std::exchange(m_isWhole, isWhole) != isWhole) {
        showText();
    }
}

void BriefText::showText()
{
    const QString shown = m_isWhole ? m_text : firstLines(m_text, m_label->font(), m_width, mostLines);
    m_label->setText(shown);
    m_details->setVisible(shown != m_text);
    layout()->activate(); // Makes the surrounding layout update at once.
    updateGeometry();
}

} // namespace talmo
