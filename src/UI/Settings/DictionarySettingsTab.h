#pragma once

#include "UI/ChangeWatcher.h"
#include "UI/ViewContext.h"

#include <QList>
#include <QString>
#include <QWidget>

class QLineEdit;
class QListWidget;
class QToolButton;

namespace talmo {

/// The user's custom vocabulary. Every change is saved at once.
class DictionarySettingsTab final : public QWidget {
public:
    explicit DictionarySettingsTab(ViewContext context);

    void reread();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A word in the list, and the number of equal words before it.
    struct ShownWord {
        QString word;
        qsizetype equalOnesBefore;
        bool operator==(const ShownWord &) const = default;
    };

    QWidget *makeEntry();
    QWidget *makeList();
    void add();
    void removeSelected();
    QList<ShownWord> selectedWords() const;

    ViewContext m_context;
    QLineEdit *m_field = nullptr;
    QListWidget *m_list = nullptr;
    QToolButton *m_remove = nullptr;
    ChangeWatcher m_watcher;
};

} // namespace talmo
