#pragma once

#include "Settings/LanguageSettings.h"
#include "UI/ChangeWatcher.h"

#include <QWidget>

#include <functional>
#include <memory>

class QPushButton;

namespace talmo {

class Picker;
class WarningRow;

/// A picker for the language, and a way out where no recogniser speaks it.
class LanguageSection final : public QWidget {
public:
    /// `onSetUp` is called once the installation of a recogniser for the language has begun.
    explicit LanguageSection(std::shared_ptr<LanguageSettings> settings, std::function<void()> onSetUp = {});

private:
    void refresh();

    std::shared_ptr<LanguageSettings> m_settings;
    Picker *m_choice = nullptr;
    WarningRow *m_problem = nullptr;
    QWidget *m_ways = nullptr;
    QPushButton *m_setUp = nullptr;
    ChangeWatcher m_watcher;
};

} // namespace talmo
