#pragma once

#include "UI/ChangeWatcher.h"
#include "UI/ViewContext.h"

#include <QList>
#include <QString>
#include <QWidget>

#include <memory>

class QLineEdit;
class QToolButton;

namespace talmo {

class WordList;

/// The user's custom vocabulary. Every change is saved at once.
class DictionarySettingsTab final : public QWidget {
public:
    explicit DictionarySettingsTab(ViewContext context);

    void refresh();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    /// A word in the list, and the number of equal words before it.
    struct ShownWord {
        QString word;
        qsizetype equalOnesBefore;
        bool operator==(const ShownWord &) const = default;
    };

    QWidget *makeEntry();
    QWidget *makeList();
    QWidget *makeWordRow();
    void add();
    void removeSelected();
    QList<ShownWord> selectedWords() const;
    void showSounds();
    void showSelectedSound();
    void saveSound();

    ViewContext m_context;
    QLineEdit *m_field = nullptr;
    WordList *m_list = nullptr;
    QToolButton *m_remove = nullptr;
    QLineEdit *m_sound = nullptr; ///< Null if no recogniser uses pronunciations.
    ChangeWatcher m_watcher;
    std::unique_ptr<ChangeWatcher> m_soundsWatcher;
};

} // namespace talmo
