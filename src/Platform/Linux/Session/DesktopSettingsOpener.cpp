#include "Platform/Linux/Session/DesktopSettingsOpener.h"

#include "Base/Log.h"

#include <QProcess>
#include <QStandardPaths>

#include <array>

namespace talmo {

namespace {

struct Command {
    const char *desktop; ///< Null for any desktop.
    SettingsPane pane;
    const char *commandLine;
};

/// The microphone's pane is the one for sound: the privacy settings that desktops have for it apply only to sandboxed
/// programs, and Talmo is not one.
constexpr std::array commands = {
    Command{"GNOME", SettingsPane::Accessibility, "gnome-control-center universal-access"},
    Command{"GNOME", SettingsPane::Microphone, "gnome-control-center sound"},
    Command{"KDE", SettingsPane::Accessibility, "systemsettings kcm_access"},
    Command{"KDE", SettingsPane::Microphone, "systemsettings kcm_pulseaudio"},
    Command{"X-Cinnamon", SettingsPane::Accessibility, "cinnamon-settings universal-access"},
    Command{"X-Cinnamon", SettingsPane::Microphone, "cinnamon-settings sound"},
    Command{"MATE", SettingsPane::Accessibility, "mate-at-properties"},
    Command{"MATE", SettingsPane::Microphone, "mate-volume-control"},
    Command{"XFCE", SettingsPane::Accessibility, "xfce4-accessibility-settings"},
    Command{nullptr, SettingsPane::Microphone, "pavucontrol"},
    Command{nullptr, SettingsPane::Microphone, "pavucontrol-qt"},
};

QStringList commandOfThisDesktop(SettingsPane pane)
{
    return settingsCommand(pane, qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':')),
                           [](const QString &program) { return !QStandardPaths::findExecutable(program).isEmpty(); });
}

} // namespace

QStringList settingsCommand(SettingsPane pane, const QStringList &desktops,
                            const std::function<bool(const QString &)> &isInstalled)
{
    for (const auto &command : commands) {
        const bool isOfDesktop = command.desktop == nullptr || desktops.contains(QLatin1String(command.desktop));
        const auto words = QString::fromLatin1(command.commandLine).split(QLatin1Char(' '));
        if (command.pane == pane && isOfDesktop && isInstalled(words.first())) {
            return words;
        }
    }
    return {};
}

bool DesktopSettingsOpener::canOpen(SettingsPane pane)
{
    return pane == SettingsPane::Microphone && !commandOfThisDesktop(pane).isEmpty();
}

void DesktopSettingsOpener::open(SettingsPane pane)
{
    auto words = commandOfThisDesktop(pane);
    if (words.isEmpty()) {
        generalLog().info("this desktop has no matching settings pane");
        return;
    }
    const QString program = words.takeFirst();
    QProcess::startDetached(program, words);
}

} // namespace talmo
