#pragma once

#include "Settings/DictationOptions.h"
#include "UI/ChangeWatcher.h"

#include <QWidget>

#include <memory>
#include <utility>
#include <vector>

class QCheckBox;

namespace talmo {

class SettingsSection;

/// The switches of the General tab for what happens around a dictation.
class DictationOptionsSection final : public QWidget {
public:
    explicit DictationOptionsSection(std::shared_ptr<DictationOptions> options);

    void refresh();

private:
    void addSwitch(SettingsSection &section, DictationOption option, const char *title, const char *caption);

    std::shared_ptr<DictationOptions> m_options;
    std::vector<std::pair<DictationOption, QCheckBox *>> m_switches;
    ChangeWatcher m_watcher;
};

} // namespace talmo
