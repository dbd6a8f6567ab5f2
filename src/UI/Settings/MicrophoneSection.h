#pragma once

#include "Settings/MicrophoneSettings.h"
#include "UI/ChangeWatcher.h"

#include <QWidget>

#include <memory>

class QPushButton;

namespace talmo {

class LevelBar;
class Picker;
class SettingsSection;
class WarningRow;

/// A picker for the microphone, with its level.
class MicrophoneSection final : public QWidget {
public:
    /// Changing some other setting is no reason to open the microphone: it lights the desktop's indicator and switches
    /// a Bluetooth headset from music to telephone quality. So the settings listen when they are asked to; the welcome,
    /// where trying the microphone is the point, listens while it is shown and says so.
    enum class Listening { WhenAsked, WhileShown };

    MicrophoneSection(std::shared_ptr<MicrophoneSettings> settings, Listening listening);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void buildLevel(SettingsSection &section);
    void refresh();

    std::shared_ptr<MicrophoneSettings> m_settings;
    Listening m_listening;
    Picker *m_choice = nullptr;
    LevelBar *m_level = nullptr;
    QPushButton *m_test = nullptr;
    WarningRow *m_problem = nullptr;
    ChangeWatcher m_watcher;
};

} // namespace talmo
