#include "UI/Settings/Words/WordFiles.h"

#include "Base/Log.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/TintedLabel.h"
#include "UI/Style/Wording.h"

#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

#include <utility>

namespace talmo {

namespace {

/// A list of words is far smaller; a file that is not one must not fill the memory.
constexpr qint64 largestFile = qint64(4) * 1024 * 1024;

const char *const filter = QT_TRANSLATE_NOOP("Talmo", "Text files (*.txt);;All files (*)");
const char *const suggestedName = "talmo-words.txt";

} // namespace

WordFiles::WordFiles(ViewContext context)
    : m_context(std::move(context))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    m_warning = new WarningRow;
    column->addWidget(m_warning);
    auto *row = new QHBoxLayout;
    auto *import = addButton(*row, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Import…")));
    auto *exportButton = addButton(*row, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Export…")));
    m_note = TintedLabel::caption({});
    m_note->hide();
    row->addWidget(m_note);
    row->addStretch(1);
    column->addLayout(row);
    connect(import, &QPushButton::clicked, this, [this] { chooseImport(); });
    connect(exportButton, &QPushButton::clicked, this, [this] { chooseExport(); });
}

QPushButton *WordFiles::addButton(QHBoxLayout &row, const QString &title)
{
    auto *button = new QPushButton(title);
    button->setFont(Appearance::font(Appearance::detailSize));
    row.addWidget(button);
    return button;
}

void WordFiles::chooseImport()
{
    auto *dialog =
        new QFileDialog(this, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Import Words")), {}, Wording::text(filter));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) { importFrom(path); });
    dialog->open();
}

void WordFiles::chooseExport()
{
    auto *dialog =
        new QFileDialog(this, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Export Words")), {}, Wording::text(filter));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->selectFile(QString::fromLatin1(suggestedName));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) { exportTo(path); });
    dialog->open();
}

void WordFiles::importFrom(const QString &path)
{
    QFile file(path);
    const bool isReadable = file.open(QFile::ReadOnly) && file.size() <= largestFile;
    const auto text = isReadable ? decodeText(file.readAll()) : std::nullopt;
    if (!text) {
        report({}, Wording::text(QT_TRANSLATE_NOOP(
                       "Talmo", "This file could not be read as text. Choose a text file with one word per line.")));
        return;
    }
    const auto read = readDictionaryText(*text);
    const QStringList before = m_context.settings->dictionaryWords();
    const QStringList after = withWordsOf(read, before);
    if (after.size() > before.size()) {
        m_context.settings->setDictionaryWords(after);
    }
    for (const auto &entry : read) {
        if (m_context.pronunciations && !entry.soundsLike.isEmpty()) {
            m_context.pronunciations->set(entry.word, entry.soundsLike);
        }
    }
    report(Wording::text(QT_TRANSLATE_NOOP("Talmo", "New words: %1")).arg(after.size() - before.size()));
}

QList<DictionaryEntry> WordFiles::entries() const
{
    QList<DictionaryEntry> all;
    for (const auto &word : m_context.settings->dictionaryWords()) {
        all.append({word, m_context.pronunciations ? m_context.pronunciations->of(word) : QString()});
    }
    return all;
}

void WordFiles::exportTo(const QString &path)
{
    const QByteArray text = dictionaryText(entries()).toUtf8();
    QSaveFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        generalLog().error("the words could not be exported: %@", {file.errorString()});
        report({},
               Wording::text(QT_TRANSLATE_NOOP(
                   "Talmo", "The words could not be saved there. Choose another folder, or free some disk space.")));
        return;
    }
    report(
        Wording::text(QT_TRANSLATE_NOOP("Talmo", "Words saved: %1")).arg(m_context.settings->dictionaryWords().size()));
}

void WordFiles::report(const QString &note, const QString &warning)
{
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
    m_warning->setText(warning);
}

} // namespace talmo
