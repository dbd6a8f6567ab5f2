#include "UI/Settings/DictionarySettingsTab.h"

#include "UI/Settings/Words/WordFiles.h"
#include "UI/Settings/Words/WordList.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/Symbol.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

constexpr int spacing = 8;
constexpr int controlHeight = 28;
constexpr int soundWidth = 200;

/// A button that shows a symbol in its text colour.
class SymbolButton final : public QToolButton {
public:
    SymbolButton(const QString &symbol, const QString &name)
        : m_symbol(symbol)
    {
        setAccessibleName(name);
        setToolTip(name);
        setFocusPolicy(Qt::StrongFocus);
        setFixedSize(Appearance::scaled(controlHeight), Appearance::scaled(controlHeight));
        tint();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange) {
            tint();
        }
        QToolButton::changeEvent(event);
    }

private:
    void tint() { setIcon(Symbol::icon(m_symbol, palette().color(QPalette::ButtonText))); }

    QString m_symbol;
};

QStringList shownWords(const QListWidget &list)
{
    QStringList words;
    for (int row = 0; row < list.count(); ++row) {
        words.append(list.item(row)->text());
    }
    return words;
}

/// The index of the word that has this many equal words before it; -1 if there is none.
qsizetype placeOf(const QStringList &words, const QString &word, qsizetype equalOnesBefore)
{
    auto place = words.indexOf(word);
    for (; place >= 0 && equalOnesBefore > 0; --equalOnesBefore) {
        place = words.indexOf(word, place + 1);
    }
    return place;
}

} // namespace

DictionarySettingsTab::DictionarySettingsTab(ViewContext context)
    : m_context(std::move(context)),
      m_watcher(*m_context.coordinator, [this] { refresh(); }, this)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    layout->addWidget(TintedLabel::caption(
        Wording::text(QT_TRANSLATE_NOOP("Talmo", "Words and phrases you add here are passed to the cleanup step as "
                                                 "context so they're preserved exactly, instead of being "
                                                 "\"corrected\" away."))));
    layout->addWidget(TintedLabel::caption(Wording::text(
        m_context.pronunciations ? QT_TRANSLATE_NOOP("Talmo", "Each is heard as well as written your way. If one is "
                                                              "misheard, select it and write what it sounds like.")
                                 : QT_TRANSLATE_NOOP("Talmo", "Each is heard as well as written your way."))));
    layout->addWidget(makeEntry());
    layout->addWidget(makeList(), 1);
    layout->addWidget(new WordFiles(m_context));
    if (m_context.pronunciations) {
        m_soundsWatcher = std::make_unique<ChangeWatcher>(*m_context.pronunciations, [this] { showSounds(); });
    }
    refresh();
}

QWidget *DictionarySettingsTab::makeEntry()
{
    auto *entry = new QWidget;
    auto *row = new QHBoxLayout(entry);
    row->setContentsMargins(0, 0, 0, 0);
    m_field = new QLineEdit;
    m_field->setFont(Appearance::font(Appearance::titleSize));
    m_field->setPlaceholderText(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Add a word or phrase")));
    m_field->setAccessibleName(m_field->placeholderText());
    connect(m_field, &QLineEdit::returnPressed, this, [this] { add(); });
    auto *addButton = new SymbolButton(QStringLiteral("plus"), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Add")));
    connect(addButton, &QToolButton::clicked, this, [this] { add(); });
    m_field->setMinimumHeight(Appearance::scaled(controlHeight));
    row->addWidget(m_field, 1);
    row->addWidget(addButton);
    return entry;
}

QWidget *DictionarySettingsTab::makeList()
{
    auto *panel = new QWidget;
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing / 2);
    m_list = new WordList;
    m_list->setFont(Appearance::font(Appearance::titleSize));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setUniformItemSizes(true);
    m_list->setSpacing(2);
    m_list->setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Dictionary")));
    m_list->installEventFilter(this);
    column->addWidget(m_list, 1);
    column->addWidget(makeWordRow());
    return panel;
}

QWidget *DictionarySettingsTab::makeWordRow()
{
    auto *panel = new QWidget;
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    m_remove = new SymbolButton(QStringLiteral("minus"), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Delete")));
    connect(m_remove, &QToolButton::clicked, this, [this] { removeSelected(); });
    connect(m_list, &QListWidget::itemSelectionChanged, this,
            [this] { m_remove->setEnabled(!m_list->selectedItems().isEmpty()); });
    m_remove->setEnabled(false);
    row->addWidget(m_remove);
    if (m_context.pronunciations) {
        row->addStretch(1);
        auto *label = new QLabel(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Sounds like")));
        label->setFont(Appearance::font(Appearance::titleSize));
        row->addWidget(label);
        m_sound = new QLineEdit;
        m_sound->setFont(Appearance::font(Appearance::titleSize));
        m_sound->setMinimumHeight(Appearance::scaled(controlHeight));
        m_sound->setFixedWidth(Appearance::scaled(soundWidth));
        m_sound->setAccessibleName(label->text());
        m_sound->setToolTip(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Used by the built-in recogniser")));
        label->setBuddy(m_sound);
        row->addWidget(m_sound);
        connect(m_sound, &QLineEdit::editingFinished, this, [this] { saveSound(); });
        connect(m_list, &QListWidget::itemSelectionChanged, this, [this] { showSelectedSound(); });
    }
    return panel;
}

void DictionarySettingsTab::showEvent(QShowEvent *event)
{
    if (m_context.pronunciations) {
        m_context.pronunciations->refresh();
        showSounds();
    }
    QWidget::showEvent(event);
}

void DictionarySettingsTab::showSounds()
{
    if (!m_context.pronunciations) {
        return;
    }
    for (int row = 0; row < m_list->count(); ++row) {
        m_list->setSound(row, m_context.pronunciations->of(m_list->item(row)->text()));
    }
    showSelectedSound();
}

void DictionarySettingsTab::showSelectedSound()
{
    if (m_sound == nullptr) {
        return;
    }
    const auto selected = m_list->selectedItems();
    const bool isOne = selected.size() == 1;
    m_sound->setEnabled(isOne);
    const QString sound = isOne ? m_list->sound(m_list->row(selected.first())) : QString();
    if (!m_sound->hasFocus() || !isOne) { // Not under the user's hands.
        m_sound->setText(sound);
    }
}

void DictionarySettingsTab::saveSound()
{
    const auto selected = m_list->selectedItems();
    if (selected.size() == 1) {
        m_context.pronunciations->set(selected.first()->text(), m_sound->text());
    }
}

void DictionarySettingsTab::refresh()
{
    const QStringList words = m_context.settings->dictionaryWords();
    if (words == shownWords(*m_list)) {
        return; // Keeps the selection.
    }
    const auto selected = selectedWords();
    m_list->clear();
    m_list->addItems(words);
    for (const auto &[word, equalOnesBefore] : selected) {
        if (const auto row = placeOf(words, word, equalOnesBefore); row >= 0) {
            m_list->item(static_cast<int>(row))->setSelected(true);
        }
    }
    showSounds();
}

QList<DictionarySettingsTab::ShownWord> DictionarySettingsTab::selectedWords() const
{
    const QStringList shown = shownWords(*m_list);
    QList<ShownWord> selected;
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->isSelected()) {
            selected.append({shown.at(row), shown.first(row).count(shown.at(row))});
        }
    }
    return selected;
}

void DictionarySettingsTab::add()
{
    const auto before = m_context.settings->dictionaryWords().size();
    m_context.settings->addDictionaryWord(m_field->text());
    m_field->clear();
    refresh();
    if (m_context.settings->dictionaryWords().size() > before) {
        m_list->scrollToBottom();
    }
}

/// Removes from the current list, which may have changed since it was shown.
void DictionarySettingsTab::removeSelected()
{
    const auto selected = selectedWords();
    const QStringList before = m_context.settings->dictionaryWords();
    QStringList words = before;
    int firstRemoved = -1;
    // From the end, so that the indexes of the remaining words stay valid.
    for (auto each = selected.crbegin(); each != selected.crend(); ++each) {
        if (const auto place = placeOf(words, each->word, each->equalOnesBefore); place >= 0) {
            words.removeAt(place);
            firstRemoved = static_cast<int>(place);
        }
    }
    if (words.size() < before.size()) {
        m_context.settings->setDictionaryWords(words);
    }
    refresh();
    if (firstRemoved >= 0 && !words.isEmpty()) { // Allows several words to be deleted in succession.
        m_list->setCurrentRow(std::min(firstRemoved, m_list->count() - 1));
    }
}

bool DictionarySettingsTab::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const auto key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Delete || key == Qt::Key_Backspace) {
            removeSelected();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace talmo
