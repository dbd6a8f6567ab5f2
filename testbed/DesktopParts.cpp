#include "DesktopParts.h"

#include "Base/Error.h"
#include "Platform/Linux/X11/XConnection.h"

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;

/// Waits until this selection has an owner, which is how such programs announce that they are ready.
void waitForOwner(const char *selection, const ChildProcess &process)
{
    XConnection connection;
    const auto isOwned = [&connection, selection] {
        const auto cookie = xcb_get_selection_owner(connection.get(), connection.atom(selection));
        const XcbPtr<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(connection.get(), cookie, nullptr));
        return reply && reply->owner != XCB_NONE;
    };
    if (!pollUntil(isOwned, 20s)) {
        throw Error(QStringLiteral("%1 has no owner: ").arg(QLatin1String(selection)) + process.output());
    }
}

} // namespace

std::unique_ptr<ChildProcess> startTray(const QProcessEnvironment &environment, const QStringList &arguments)
{
    auto tray = std::make_unique<ChildProcess>(
        QStringLiteral("trayer"),
        QStringList{QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--align"), QStringLiteral("right"),
                    QStringLiteral("--widthtype"), QStringLiteral("request"), QStringLiteral("--height"),
                    QStringLiteral("24"), QStringLiteral("--SetDockType"), QStringLiteral("true"),
                    QStringLiteral("--SetPartialStrut"), QStringLiteral("true")} +
            arguments,
        environment);
    waitForOwner("_NET_SYSTEM_TRAY_S0", *tray);
    return tray;
}

std::unique_ptr<ChildProcess> startCompositor(const QProcessEnvironment &environment)
{
    auto compositor = std::make_unique<ChildProcess>(
        QStringLiteral("picom"), QStringList{QStringLiteral("--backend"), QStringLiteral("xrender")}, environment);
    waitForOwner("_NET_WM_CM_S0", *compositor);
    return compositor;
}

std::unique_ptr<ChildProcess> startBus(QProcessEnvironment &environment)
{
    auto bus = std::make_unique<ChildProcess>(
        QStringLiteral("dbus-daemon"),
        QStringList{QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                    QStringLiteral("--address=unix:tmpdir=") + environment.value(QStringLiteral("XDG_RUNTIME_DIR"))},
        environment);
    const auto line = bus->waitForLine(QStringLiteral("unix:"), 20s);
    if (!line) {
        throw Error(QStringLiteral("dbus-daemon did not start: ") + bus->output());
    }
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), line->text);
    qputenv("DBUS_SESSION_BUS_ADDRESS", line->text.toUtf8());
    return bus;
}

} // namespace talmo::testbed
