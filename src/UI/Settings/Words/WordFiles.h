#pragma once

#include "Settings/DictionaryText.h"
#include "UI/ViewContext.h"

#include <QWidget>

class QHBoxLayout;
class QPushButton;

namespace talmo {

class TintedLabel;
class WarningRow;

/// Imports the dictionary from a text file, exports it to one, and reports the outcome.
class WordFiles final : public QWidget {
public:
    explicit WordFiles(ViewContext context);

    /// Adds the file's words, with their pronunciations; none is removed.
    void importFrom(const QString &path);
    void exportTo(const QString &path);

private:
    QPushButton *addButton(QHBoxLayout &row, const QString &title);
    void chooseImport();
    void chooseExport();
    QList<DictionaryEntry> entries() const;
    void report(const QString &note, const QString &warning = {});

    ViewContext m_context;
    TintedLabel *m_note = nullptr;
    WarningRow *m_warning = nullptr;
};

} // namespace talmo
