#include "UI/Menu/MenuBarView.h"

#include "UI/Menu/MenuRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/BriefText.h"
#include "UI/Style/Separator.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

namespace {

constexpr int panelWidth = 300;
constexpr int margin = 8;
constexpr int textInset = 8;
constexpr int separatorHeight = 11;

QColor primary(const QPalette &palette)
{
    return palette.color(QPalette::WindowText);
}

} // namespace

MenuBarView::MenuBarView(ViewContext context, std::function<void(MenuAction)> perform)
    : m_context(std::move(context)),
      m_perform(std::move(perform)),
      m_watcher({m_context.coordinator, m_context.pause.get(), m_context.recogniser.get()}, [this] { refresh(); }, this)
{
    setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo")));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin + 4, margin, margin);
    layout->setSpacing(0);
    buildHeader(*layout);
    buildWarnings(*layout);
    buildOffer(*layout);
    buildRows(*layout);
    m_contents = MenuContents::make(m_context);
    showContents();
    auto *settingsShortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma), this);
    connect(settingsShortcut, &QShortcut::activated, this, [this] { choose(MenuAction::OpenSettings); });
}

void MenuBarView::buildHeader(QVBoxLayout &layout)
{
    const int textWidth = Appearance::scaled(panelWidth) - 2 * (margin + textInset);
    m_title = new BriefText(Appearance::font(Appearance::titleSize, QFont::DemiBold), &primary, textWidth);
    m_title->setOnSizeChanged([this] { announceSize(); });
    m_subtitle = new TintedLabel(Appearance::font(Appearance::detailSize), &Appearance::secondary);
    for (auto *text : std::initializer_list<QWidget *>{m_title, m_subtitle}) {
        text->setContentsMargins(textInset, 0, textInset, 0);
    }
    layout.addWidget(m_title);
    layout.addSpacing(2);
    layout.addWidget(m_subtitle);
    layout.addSpacing(2);
    layout.addWidget(new Separator(separatorHeight, textInset));
}

void MenuBarView::buildWarnings(QVBoxLayout &layout)
{
    m_warnings = new QWidget;
    auto *box = new QVBoxLayout(m_warnings);
    box->setContentsMargins(textInset, 2, textInset, 0);
    box->setSpacing(6);
    m_grant = new QPushButton;
    m_grant->setFont(Appearance::font(Appearance::titleSize));
    connect(m_grant, &QPushButton::clicked, this, [this] { choose(m_contents.grant.action); });
    box->addWidget(m_grant);
    box->addWidget(new Separator(separatorHeight));
    layout.addWidget(m_warnings);
}

void MenuBarView::buildOffer(QVBoxLayout &layout)
{
    m_offer = new QWidget;
    auto *box = new QVBoxLayout(m_offer);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(0);
    m_offerRow = addRow(*box);
    connect(m_offerRow, &QPushButton::clicked, this, [this] { choose(m_contents.offer.action); });
    m_offerDetail = TintedLabel::caption({});
    m_offerDetail->setContentsMargins(textInset, 0, textInset, 0);
    box->addWidget(m_offerDetail);
    box->addWidget(new Separator(separatorHeight, textInset));
    layout.addWidget(m_offer);
}

MenuRow *MenuBarView::addRow(QVBoxLayout &layout)
{
    auto *row = new MenuRow;
    layout.addWidget(row);
    return row;
}

void MenuBarView::buildRows(QVBoxLayout &layout)
{
    m_mainRow = addRow(layout);
    m_resume = addRow(layout);
    layout.addWidget(new Separator(separatorHeight, textInset));
    m_settings = addRow(layout);
    m_quit = addRow(layout);
    connect(m_mainRow, &QPushButton::clicked, this, [this] { choose(m_contents.mainRow.action); });
    connect(m_resume, &QPushButton::clicked, this, [this] { choose(m_contents.pause.action); });
    connect(m_settings, &QPushButton::clicked, this, [this] { choose(m_contents.settings.action); });
    connect(m_quit, &QPushButton::clicked, this, [this] { choose(m_contents.quit.action); });
}

void MenuBarView::refresh()
{
    auto contents = MenuContents::make(m_context);
    if (contents == m_contents) {
        return;
    }
    m_contents = std::move(contents);
    const QSize before = sizeHint();
    showContents();
    if (sizeHint() != before && m_onSizeChanged) {
        m_onSizeChanged();
    }
}

void MenuBarView::showContents()
{
    m_title->setText(m_contents.title);
    m_subtitle->setText(m_contents.subtitle);
    m_subtitle->setVisible(!m_contents.subtitle.isEmpty());
    showWarnings();
    showOffer();
    m_mainRow->setContents(m_contents.mainRow.symbol, m_contents.mainRow.title, m_contents.mainRow.hint);
    m_mainRow->setEnabled(m_contents.mainRow.action != MenuAction::None);
    m_resume->setContents(m_contents.pause.symbol, m_contents.pause.title, m_contents.pause.hint);
    m_resume->setVisible(m_contents.pause.action == MenuAction::Resume);
    m_settings->setContents(m_contents.settings.symbol, m_contents.settings.title, m_contents.settings.hint);
    m_quit->setContents(m_contents.quit.symbol, m_contents.quit.title, m_contents.quit.hint);
    layout()->activate();
}

void MenuBarView::setDetailed(bool isDetailed)
{
    m_title->setWhole(isDetailed);
    layout()->activate();
}

void MenuBarView::announceSize()
{
    layout()->activate();
    if (m_onSizeChanged) {
        m_onSizeChanged();
    }
}

/// The height of wrapping text is known only once its width is.
QSize MenuBarView::sizeHint() const
{
    const int width = Appearance::scaled(panelWidth);
    return {width, layout()->totalHeightForWidth(width)};
}

void MenuBarView::showWarnings()
{
    for (auto *row : std::exchange(m_warningRows, {})) {
        delete row;
    }
    auto *box = qobject_cast<QVBoxLayout *>(m_warnings->layout());
    for (const auto &warning : m_contents.warnings) {
        auto *row = new QWidget;
        auto *line = new QHBoxLayout(row);
        line->setContentsMargins(0, 0, 0, 0);
        line->addWidget(new SymbolLabel(QStringLiteral("exclamationmark.triangle.fill"), &Appearance::orange));
        auto *label = new TintedLabel(Appearance::font(Appearance::detailSize), &primary);
        label->setText(warning);
        line->addWidget(label, 1);
        box->insertWidget(static_cast<int>(m_warningRows.size()), row);
        m_warningRows.push_back(row);
    }
    m_grant->setText(m_contents.grant.title);
    m_warnings->setVisible(!m_contents.warnings.isEmpty());
}

void MenuBarView::showOffer()
{
    const auto &offer = m_contents.offer;
    m_offerRow->setContents(offer.symbol, offer.title, offer.hint);
    m_offerDetail->setText(m_contents.offerDetail);
    m_offer->setVisible(offer.action != MenuAction::None);
}

void MenuBarView::focusFirstRow()
{
    (m_mainRow->isEnabled() ? m_mainRow : m_settings)->setFocus(Qt::PopupFocusReason);
}

void MenuBarView::choose(MenuAction action)
{
    if (action != MenuAction::None) {
        m_perform(action);
    }
}

void MenuBarView::moveFocus(int step)
{
    step > 0 ? focusNextChild() : focusPreviousChild();
}

void MenuBarView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Down:
        moveFocus(1);
        return;
    case Qt::Key_Up:
        moveFocus(-1);
        return;
    case Qt::Key_Home:
        focusFirstRow();
        return;
    case Qt::Key_End:
        m_quit->setFocus(Qt::TabFocusReason);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace talmo
