#include "Platform/Linux/Gnome/GnomeDesktop.h"

#include "Platform/Linux/Gnome/GnomeExtensionStatus.h"
#include "Platform/Linux/Gnome/GnomeFocusedField.h"
#include "Platform/Linux/Gnome/GnomeKeys.h"
#include "Platform/Linux/Gnome/GnomeTextCommitter.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Session/UnknownCursor.h"

#include <QGuiApplication>

namespace talmo {

void useGnomeShell(Desktop &desktop, const std::shared_ptr<GnomeShell> &shell, const DesktopOptions &options)
{
    desktop.description += QStringLiteral(", GNOME Shell");
    const auto keys = std::make_shared<GnomeKeys>(shell, triggerKeyNames(options.hotkeys),
                                                  GnomeKeys::Otherwise{desktop.eventMonitor, desktop.cancelKey},
                                                  [] { return QGuiApplication::focusWindow() != nullptr; });
    desktop.eventMonitor = keys;
    desktop.cancelKey = keys;
    desktop.focusedField = std::make_shared<GnomeFocusedField>(shell, desktop.focusedField);
    desktop.extension = std::make_shared<GnomeExtensionStatus>();
    desktop.cursorWatch = std::make_shared<UnknownCursor>();
    if (options.defaults && options.defaults->boolean(GnomeTextCommitter::switchKey()).value_or(false)) {
        desktop.textCommitter = std::make_shared<GnomeTextCommitter>(shell);
    }
    if (shell->isAvailable()) {
        desktop.limits.clear(); // They were found without the extension.
    }
}

} // namespace talmo
