#include "Platform/Linux/X11/X11Check.h"

#include "Base/Error.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/X11/Keys/XHotkeyControl.h"
#include "Platform/Linux/X11/Keys/XInputTrust.h"
#include "Platform/Linux/X11/XSession.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>

namespace talmo {

namespace {

const QString deskName = QStringLiteral("desktop");

/// Whether a program has announced itself by owning this selection.
bool isOwned(XConnection &connection, const QByteArray &selection)
{
    auto *raw = connection.get();
    const XcbPtr<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        raw, xcb_intern_atom(raw, 0, static_cast<quint16>(selection.size()), selection.constData()), nullptr));
    if (!atom) {
        return false;
    }
    const XcbPtr<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(raw, xcb_get_selection_owner(raw, atom->atom), nullptr));
    return owner && owner->owner != XCB_NONE;
}

bool hasNotifierHost()
{
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        return false; // The D-Bus library would start a bus of its own.
    }
    const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
    auto question =
        QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << watcher << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    constexpr int longestWait = 500; // ms
    const QDBusReply<QVariant> reply = QDBusConnection::sessionBus().call(question, QDBus::Block, longestWait);
    return reply.isValid() && reply.value().toBool();
}

QString titles(const HotkeyControl::Keys &keys)
{
    QStringList titles;
    for (const auto &key : keys.used) {
        titles.append(key.title);
    }
    return titles.join(QStringLiteral(", "));
}

CheckResult checkKey(const DesktopCheckOptions &options)
{
    CheckResult result{QStringLiteral("key"), false, true, {}, {}};
    const auto monitor = std::make_shared<XInput2EventMonitor>(
        std::make_shared<PostedKeys>(), triggerKeySymbols(options.hotkeys), [] { return false; });
    const auto keys = XHotkeyControl(monitor, options.hotkeys).keys();
    const QString choose = QStringLiteral("Choose a key in Talmo's settings.");
    if (!monitor->isUsable()) {
        result.detail = QStringLiteral("This X server lacks XInput 2.2.");
        result.remedy = QStringLiteral("Use an X server that has it: every X.Org server since 2012 does.");
    } else if (!keys.unknown.isEmpty()) {
        result.detail = QStringLiteral("No key is called “%1”.").arg(keys.unknown.first());
        result.remedy = choose;
    } else if (!keys.missing.isEmpty()) {
        result.detail = QStringLiteral("The keyboard layout has no key “%1”.").arg(keys.missing.first());
        result.remedy = choose;
    } else {
        result.isOk = true;
        result.detail = QStringLiteral("Hold %1.").arg(titles(keys));
        if (!keys.taken.isEmpty() && !options.isTalmoRunning) {
            result.detail += QStringLiteral(" Another program reacts to %1 as well.").arg(keys.taken.first());
        }
    }
    return result;
}

CheckResult checkPaste()
{
    const bool isThere = XInputTrust(XSession::open(), nullptr).isTrusted();
    return {QStringLiteral("paste"), isThere, true,
            isThere ? QStringLiteral("Talmo can press the paste shortcut.")
                    : QStringLiteral("This X server lacks XTEST, so no program can press keys for you."),
            isThere ? QString() : QStringLiteral("Start the X server with the XTEST extension.")};
}

CheckResult checkOverlay(XConnection &connection)
{
    const bool isComposited = isOwned(connection, "_NET_WM_CM_S0");
    return {QStringLiteral("overlay"), true, false,
            isComposited ? QStringLiteral("Shown with a shadow.")
                         : QStringLiteral("Shown without a shadow: no compositor is running."),
            QString()};
}

CheckResult checkTray(XConnection &connection)
{
    const bool isThere = hasNotifierHost() || isOwned(connection, "_NET_SYSTEM_TRAY_S0");
    return {QStringLiteral("tray"), isThere, false,
            isThere ? QStringLiteral("The desktop has a place for Talmo's icon.")
                    : QStringLiteral("The desktop has no place for Talmo's icon."),
            isThere ? QString()
                    : QStringLiteral("Add a tray or “status notifier” to the panel, or start Talmo again to open its "
                                     "settings.")};
}

} // namespace

QList<CheckResult> checkX11(const DesktopCheckOptions &options)
{
    const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    try {
        XConnection connection;
        return {
            {deskName, true, true,
             QStringLiteral("X11, display %1%2")
                 .arg(qEnvironmentVariable("DISPLAY"), desktop.isEmpty() ? QString() : QStringLiteral(", ") + desktop),
             QString()},
            checkKey(options),
            checkPaste(),
            checkOverlay(connection),
            checkTray(connection)};
    } catch (const Error &) {
        return {{deskName, false, true, QStringLiteral("No X server can be reached."),
                 QStringLiteral("Log in to an X11 session, and run this in a terminal of it.")}};
    }
}

} // namespace talmo
