#pragma once

#include "Settings/HotkeySettings.h"
#include "UI/ChangeWatcher.h"

#include <QWidget>

#include <memory>

class QHBoxLayout;
class QPushButton;

namespace talmo {

class TintedLabel;
class WarningRow;

/// The keys to hold, and buttons to choose others.
class HotkeyRows final : public QWidget {
public:
    explicit HotkeyRows(std::shared_ptr<HotkeySettings> settings);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void hideEvent(QHideEvent *event) override;

private:
    QPushButton *addButton(QHBoxLayout &row);
    void toggleCapture(HotkeySettings::Capture capture);
    void refresh();
    void refreshKeys();
    void keepKeysFromControls(bool isCapturing);

    std::shared_ptr<HotkeySettings> m_settings;
    QWidget *m_keysLine = nullptr;
    QHBoxLayout *m_keys = nullptr;
    QPushButton *m_change = nullptr;
    QPushButton *m_add = nullptr;
    TintedLabel *m_help = nullptr;
    QWidget *m_suggestionLine = nullptr;
    TintedLabel *m_question = nullptr;
    QPushButton *m_suggestion = nullptr;
    WarningRow *m_problem = nullptr;
    bool m_isFiltering = false;
    ChangeWatcher m_watcher;
};

} // namespace talmo
