#include "Platform/Linux/Wayland/WaylandCheck.h"

#include "Platform/Linux/Evdev/EvdevKeyboards.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Wayland/Clipboard/DataControl.h"
#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"
#include "Platform/Linux/Wayland/Portal/PortalRequest.h"
#include "Platform/Linux/Wayland/Sway/SwayEventMonitor.h"
#include "Platform/Linux/Wayland/WaylandLimits.h"
#include "Platform/Linux/Wayland/Windows/LayerSurface.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <algorithm>

namespace talmo {

namespace {

CheckResult limited(const QString &name, const DesktopLimit &limit)
{
    return {name, false, false, QString::fromUtf8(limit.sentence), QString::fromUtf8(limit.remedy)};
}

CheckResult checkSession(const WaylandSession &session, bool hasX11)
{
    const QByteArray clipboard = DataControl::offeredInterface(session);
    if (!hasX11) {
        return {QStringLiteral("desktop"), false, true,
                QStringLiteral("Talmo's windows need XWayland, which this session lacks."),
                QStringLiteral("Enable XWayland, and run this in a terminal of the session.")};
    }
    return {QStringLiteral("desktop"), true, true,
            QStringLiteral("Wayland, ") +
                (clipboard.isEmpty() ? QStringLiteral("clipboard of X") : QString::fromUtf8(clipboard)),
            QString()};
}

CheckResult checkKey(const DesktopCheckOptions &options, bool hasShell)
{
    const QString name = QStringLiteral("key");
    const auto title = [](const QStringList &names) { return keyDisplayName(triggerKeySymbols(names).first()); };
    if (hasShell) {
        return {name, true, true, QStringLiteral("%1, by Talmo's extension.").arg(title(options.hotkeys)), QString()};
    }
    if (options.readsKeyboards && EvdevKeyboards::open()) {
        return {name, true, true, QStringLiteral("%1, read from the keyboards.").arg(title(options.hotkeys)),
                QString()};
    }
    if (SwayIpc::open()) {
        const auto names = options.hotkeys.isEmpty() ? SwayEventMonitor::defaultKeys() : options.hotkeys;
        return {name, true, true, QStringLiteral("%1, by a binding of sway's.").arg(title(names)), QString()};
    }
    if (const auto *names = QDBusConnection::sessionBus().interface();
        names != nullptr && names->isServiceRegistered(QStringLiteral("org.kde.kglobalaccel"))) {
        return {name, true, true, QStringLiteral("By KDE's global shortcuts."), QString()};
    }
    if (PortalRequest::versionOf(PortalRequest::connectToPortal(), QStringLiteral("GlobalShortcuts")) > 0) {
        return {name, true, true, QStringLiteral("By the desktop's global shortcuts, if you allow it."), QString()};
    }
    return limited(name, WaylandLimits::unseenKeys);
}

CheckResult checkPaste(const WaylandSession &session, bool hasShell)
{
    const QString name = QStringLiteral("paste");
    const bool canType =
        hasShell || (!DataControl::offeredInterface(session).isEmpty() && ChordKeyboard::isOffered(session));
    return canType ? CheckResult{name, true, true, QStringLiteral("Talmo can press the paste shortcut."), QString()}
                   : limited(name, WaylandLimits::untypedText);
}

} // namespace

void checkWayland(QList<CheckResult> &results, const WaylandSession &session, const DesktopCheckOptions &options,
                  bool hasShell)
{
    const bool hasX11 = results.size() > 1; // Without a server there is nothing else to check.
    QList<CheckResult> found{checkSession(session, hasX11), checkKey(options, hasShell), checkPaste(session, hasShell)};
    if (LayerSurface::isOffered(session)) {
        found.append({QStringLiteral("overlay"), true, false, QStringLiteral("Shown above all windows."), QString()});
    }
    for (const auto &result : found) {
        const auto same = std::find_if(results.begin(), results.end(),
                                       [&result](const CheckResult &other) { return other.name == result.name; });
        if (same == results.end()) {
            results.append(result);
        } else {
            *same = result;
        }
    }
}

} // namespace talmo
