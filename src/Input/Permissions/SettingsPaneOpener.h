#pragma once

namespace talmo {

enum class SettingsPane { Accessibility, Microphone };

/// The desktop's own settings. Main thread; returns at once.
class SettingsPaneOpener {
public:
    virtual ~SettingsPaneOpener() = default;

    /// Opens the pane where the desktop has one, else does nothing.
    virtual void open(SettingsPane pane) = 0;
};

} // namespace talmo
