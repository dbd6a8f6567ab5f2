#pragma once

#include "Input/Permissions/SettingsPaneOpener.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace talmo {

/// Starts the settings program of the current desktop.
class DesktopSettingsOpener final : public SettingsPaneOpener {
public:
    void open(SettingsPane pane) override;
    /// Whether a program for the pane is installed and of help: no desktop has settings for typing into other windows,
    /// although all have a page called accessibility.
    static bool canOpen(SettingsPane pane);
};

/// The command line that opens a pane: the desktop's first one whose program is installed; empty if there is none.
/// `desktops` are the session's desktop names, most specific first.
QStringList settingsCommand(SettingsPane pane, const QStringList &desktops,
                            const std::function<bool(const QString &)> &isInstalled);

} // namespace talmo
