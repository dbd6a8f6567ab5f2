#include "UI/Settings/SettingsSection.h"

#include "UI/Style/Appearance.h"
#include "UI/Style/Separator.h"
#include "UI/Style/Symbol.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/ToggleStyle.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace talmo {

namespace {

constexpr int padding = 14;
constexpr int rowSpacing = 6;
constexpr int separatorHeight = 9;
constexpr qreal radius = 8;

class Surface final : public QWidget {
protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Appearance::hairline(palette()), 1));
        painter.setBrush(Appearance::groupSurface(palette()));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
};

} // namespace

SettingsSection::SettingsSection(const QString &heading)
{
    setAccessibleName(heading);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(rowSpacing);
    if (!heading.isEmpty()) {
        auto *label = new QLabel(heading);
        label->setTextFormat(Qt::PlainText);
        label->setFont(Appearance::font(Appearance::titleSize, QFont::DemiBold));
        label->setContentsMargins(2, 0, 0, 0);
        outer->addWidget(label);
    }
    auto *surface = new Surface;
    m_rows = new QVBoxLayout(surface);
    m_rows->setContentsMargins(padding, padding - 2, padding, padding - 2);
    m_rows->setSpacing(rowSpacing - 2);
    outer->addWidget(surface);
}

int SettingsSection::toggleIndent()
{
    const auto *style = ToggleStyle::shared();
    return style->pixelMetric(QStyle::PM_IndicatorWidth) + style->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
}

QCheckBox *SettingsSection::addToggle(const QString &title, const QString &caption)
{
    auto *toggle = new QCheckBox(title);
    toggle->setStyle(ToggleStyle::shared());
    toggle->setFont(Appearance::font(Appearance::titleSize));
    m_rows->addWidget(toggle);
    if (!caption.isEmpty()) {
        toggle->setAccessibleDescription(caption);
        addWidget(TintedLabel::caption(caption), toggleIndent());
    }
    return toggle;
}

QHBoxLayout *SettingsSection::addRow(const QString &name, QWidget *control)
{
    auto *row = new QHBoxLayout;
    auto *label = new QLabel(name);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Appearance::font(Appearance::titleSize));
    label->setBuddy(control);
    row->addWidget(label);
    row->addStretch(1);
    row->addWidget(control);
    m_rows->addLayout(row);
    return row;
}

void SettingsSection::addCaption(const QString &text)
{
    m_rows->addWidget(TintedLabel::caption(text));
}

QWidget *SettingsSection::addExample(const QString &symbol, const QString &text)
{
    auto *example = new QWidget;
    auto *row = new QHBoxLayout(example);
    row->setContentsMargins(2, 0, 0, 0);
    row->setSpacing(m_rows->spacing());
    row->addWidget(new SymbolLabel(symbol, &Appearance::secondary, Symbol::rowSize - 2));
    row->addWidget(TintedLabel::caption(text), 1);
    m_rows->addWidget(example);
    return example;
}

void SettingsSection::addWidget(QWidget *widget, int indent)
{
    if (indent == 0) {
        m_rows->addWidget(widget);
        return;
    }
    auto *row = new QHBoxLayout;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft; // Layouts mirror their items, not their margins.
    row->setContentsMargins(isMirrored ? 0 : indent, 0, isMirrored ? indent : 0, 0);
    row->addWidget(widget);
    m_rows->addLayout(row);
}

void SettingsSection::addSeparator()
{
    m_rows->addWidget(new Separator(separatorHeight));
}

} // namespace talmo
