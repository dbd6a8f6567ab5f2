#pragma once

#include "App/DictationHistory.h"
#include "App/DictationRecovery.h"
#include "UI/ChangeWatcher.h"

#include <QWidget>

#include <memory>

class QCheckBox;
class QListWidget;
class QPushButton;

namespace talmo {

class SettingsSection;

/// Whether dictations are kept, and the list of those that are.
class HistorySection final : public QWidget {
public:
    HistorySection(std::shared_ptr<DictationOptions> options, std::shared_ptr<DictationHistory> history,
                   std::shared_ptr<DictationRecovery> recovery);

    void refresh();

private:
    QWidget *makeKept();
    void fillList();
    void copySelected();

    std::shared_ptr<DictationOptions> m_options;
    std::shared_ptr<DictationHistory> m_history;
    std::shared_ptr<DictationRecovery> m_recovery;
    QCheckBox *m_keep = nullptr;
    QWidget *m_kept = nullptr;
    QListWidget *m_list = nullptr;
    QPushButton *m_copy = nullptr;
    QPushButton *m_clear = nullptr;
    ChangeWatcher m_optionsWatcher;
    ChangeWatcher m_historyWatcher;
};

} // namespace talmo
