#pragma once

namespace talmo {

enum class SettingsPane { Accessibility, Microphone };

/// The desktop's settings. Main thread; returns at once.
class SettingsPaneOpener {
public:
    virtual ~SettingsPaneOpener() = default;

    /// Opens the pane; does nothing if the desktop has no such pane.
    virtual void open(SettingsPane pane) = 0;
};

} // namespace talmo
