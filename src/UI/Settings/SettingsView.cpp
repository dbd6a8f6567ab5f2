#include "UI/Settings/SettingsView.h"

#include "UI/Settings/SettingsScrollArea.h"

#include "UI/Settings/DictionarySettingsTab.h"
#include "UI/Settings/GeneralSettingsTab.h"
#include "UI/Settings/PrivacySettingsTab.h"
#include "UI/Settings/RecogniserSection.h"
#include "UI/Settings/SettingsTabBar.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/Separator.h"
#include "UI/Style/Wording.h"

#include <QShortcut>
#include <QVBoxLayout>

namespace talmo {

namespace {

constexpr int margin = 18;
constexpr int tabMargin = 8;

} // namespace

SettingsView::SettingsView(const ViewContext &context)
    : m_tabs(new SettingsTabBar),
      m_pages(new QStackedWidget)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, tabMargin, 0, 0);
    layout->setSpacing(tabMargin);
    layout->addWidget(m_tabs, 0, Qt::AlignHCenter);
    auto *line = new Separator(1);
    layout->addWidget(line);
    layout->addWidget(m_pages, 1);
    connect(m_tabs, &QTabBar::currentChanged, m_pages, &QStackedWidget::setCurrentIndex);

    auto *general = new GeneralSettingsTab(context, [this] { showRecogniser(); });
    auto *dictionary = new DictionarySettingsTab(context);
    auto *privacy = new PrivacySettingsTab(context);
    addPage(general, Wording::text(QT_TRANSLATE_NOOP("Talmo", "General")), QStringLiteral("gearshape"));
    addPage(dictionary, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Dictionary")), QStringLiteral("text.book.closed"));
    addPage(privacy, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Privacy")), QStringLiteral("lock.shield"));
    if (context.recogniser) {
        addRecogniser(context.recogniser);
    }
    m_refreshTabs = [general, dictionary, privacy] {
        general->refresh();
        dictionary->refresh();
        privacy->refresh();
    };
    addShortcuts();
}

/// Pages scroll on screens that are too low for them.
void SettingsView::addPage(QWidget *page, const QString &title, const QString &symbol)
{
    auto *inner = new QWidget;
    auto *layout = new QVBoxLayout(inner);
    layout->setContentsMargins(margin, margin - tabMargin, margin, margin);
    layout->addWidget(page);
    auto *area = scrollAreaOf(inner, title);
    m_firstPage = m_firstPage != nullptr ? m_firstPage : inner;
    m_pages->addWidget(area);
    m_tabs->addSymbolTab(symbol, title);
}

void SettingsView::addRecogniser(const std::shared_ptr<RecogniserSettings> &recogniser)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new RecogniserSection(recogniser));
    layout->addStretch(1);
    m_recogniserPage = m_tabs->count();
    addPage(page, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Recogniser")), QStringLiteral("waveform"));
}

void SettingsView::showRecogniser()
{
    showPage(m_recogniserPage);
}

void SettingsView::showPage(int index)
{
    if (index >= 0) {
        m_tabs->setCurrentIndex(index);
    }
}

void SettingsView::addShortcuts()
{
    for (const auto &keys : {QKeySequence(Qt::CTRL | Qt::Key_Tab), QKeySequence(Qt::CTRL | Qt::Key_PageDown)}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, [this] { turnPages(1); });
    }
    for (const auto &keys :
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), QKeySequence(Qt::CTRL | Qt::Key_PageUp)}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, [this] { turnPages(-1); });
    }
}

void SettingsView::turnPages(int step)
{
    m_tabs->setCurrentIndex((m_tabs->currentIndex() + step + m_tabs->count()) % m_tabs->count());
}

void SettingsView::refresh()
{
    m_refreshTabs();
}

int SettingsView::idealHeight(int width) const
{
    return tabMargin + m_tabs->sizeHint().height() + tabMargin + 1 + tabMargin +
           m_firstPage->layout()->totalHeightForWidth(width);
}

} // namespace talmo
