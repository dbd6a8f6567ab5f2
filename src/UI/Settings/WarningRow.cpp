#include "UI/Settings/WarningRow.h"

#include "UI/Accessibility/Announcement.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/Style/TintedLabel.h"

#include <QHBoxLayout>

namespace talmo {

WarningRow::WarningRow()
    : m_text(new TintedLabel(Appearance::font(Appearance::captionSize), &Appearance::orange))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 2, 0, 0);
    row->addWidget(new SymbolLabel(QStringLiteral("exclamationmark.triangle"), &Appearance::orange), 0, Qt::AlignTop);
    row->addWidget(m_text, 1);
    hide();
}

void WarningRow::setText(const QString &text)
{
    const bool isNews = text != m_text->text() && window()->isVisible();
    m_text->setText(text);
    setVisible(!text.isEmpty());
    if (isNews && isVisible()) {
        announceToScreenReader(text);
    }
}

} // namespace talmo
