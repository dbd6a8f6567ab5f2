#pragma once

#include "Input/Permissions/SettingsPaneOpener.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace talmo {

/// Starts the settings program of the desktop that runs.
class DesktopSettingsOpener final : public SettingsPaneOpener {
public:
    void open(SettingsPane pane) override;
};

/// The command line that opens a pane: the first of the desktop's whose program is there; empty when there is none.
/// `desktops` are the session's names for itself, most specific first.
QStringList settingsCommand(SettingsPane pane, const QStringList &desktops,
                            const std::function<bool(const QString &)> &isInstalled);

} // namespace talmo
