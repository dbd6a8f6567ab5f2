#include "UI/Settings/HistorySection.h"

#include "UI/Settings/SettingsSection.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/RowDelegate.h"
#include "UI/Style/Wording.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

namespace {

constexpr int listHeight = 132;
constexpr int spacing = 6;

const char *const historyCaption = QT_TRANSLATE_NOOP(
    "Talmo", "The last 50, in memory only: they are gone when Talmo ends or you switch this off. Nothing is kept that "
             "went into a field which reports itself as a password field.");

/// One line: an item of the list has the height of one.
QString oneLine(const QString &text)
{
    return text.simplified();
}

} // namespace

HistorySection::HistorySection(std::shared_ptr<DictationOptions> options, std::shared_ptr<DictationHistory> history,
                               std::shared_ptr<DictationRecovery> recovery)
    : m_options(std::move(options)),
      m_history(std::move(history)),
      m_recovery(std::move(recovery)),
      m_optionsWatcher(
          *m_options, [this] { refresh(); }, this),
      m_historyWatcher(*m_history, [this] { refresh(); }, this)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *section = new SettingsSection;
    m_keep = section->addToggle(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Keep a list of dictations")),
                                Wording::text(historyCaption));
    connect(m_keep, &QCheckBox::toggled, this,
            [kept = m_options](bool isOn) { kept->setOn(DictationOption::KeepHistory, isOn); });
    m_kept = makeKept();
    section->addWidget(m_kept);
    layout->addWidget(section);
    refresh();
}

QWidget *HistorySection::makeKept()
{
    auto *kept = new QWidget;
    auto *column = new QVBoxLayout(kept);
    column->setContentsMargins(0, spacing, 0, 0);
    column->setSpacing(spacing);
    m_list = new QListWidget;
    m_list->setFont(Appearance::font(Appearance::detailSize));
    m_list->setItemDelegate(new RowDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFixedHeight(Appearance::scaled(listHeight));
    m_list->setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Dictations")));
    column->addWidget(m_list);
    auto *buttons = new QHBoxLayout;
    m_copy = new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Copy")));
    m_clear = new QPushButton(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Clear")));
    for (auto *button : {m_copy, m_clear}) {
        button->setFont(Appearance::font(Appearance::detailSize));
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    column->addLayout(buttons);
    connect(m_list, &QListWidget::itemActivated, this, [this] { copySelected(); });
    connect(m_list, &QListWidget::itemSelectionChanged, this,
            [this] { m_copy->setEnabled(!m_list->selectedItems().isEmpty()); });
    connect(m_copy, &QPushButton::clicked, this, [this] { copySelected(); });
    connect(m_clear, &QPushButton::clicked, this, [history = m_history] { history->clear(); });
    return kept;
}

void HistorySection::copySelected()
{
    const auto selected = m_list->selectedItems();
    if (!selected.isEmpty()) {
        m_recovery->copy(selected.first()->data(Qt::UserRole).toString());
    }
}

void HistorySection::refresh()
{
    const bool isOn = m_history->isOn();
    const QSignalBlocker blocker(m_keep);
    m_keep->setChecked(isOn);
    m_kept->setVisible(isOn);
    fillList();
    m_clear->setEnabled(m_list->count() > 0);
    m_copy->setEnabled(!m_list->selectedItems().isEmpty());
}

void HistorySection::fillList()
{
    QStringList shown;
    for (int row = 0; row < m_list->count(); ++row) {
        shown.append(m_list->item(row)->data(Qt::UserRole).toString());
    }
    if (shown == m_history->texts()) {
        return; // Keeps the selection.
    }
    m_list->clear();
    for (const auto &text : m_history->texts()) {
        auto *item = new QListWidgetItem(oneLine(text), m_list);
        item->setData(Qt::UserRole, text);
    }
}

} // namespace talmo
