#include "DesktopParts.h"

#include "Base/Error.h"
#include "Platform/Linux/X11/XConnection.h"

#include <QDir>
#include <QFile>

#include <utility>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;

/// For one that ends at once.
constexpr auto programTime = 10s;

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

QProcessEnvironment privateEnvironment(const QString &folder)
{
    const QDir all(folder);
    for (const auto *name : {"run", "config", "state", "cache", "data"}) {
        all.mkpath(QString::fromLatin1(name));
    }
    const QString run = all.filePath(QStringLiteral("run"));
    QFile::setPermissions(run, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const std::pair<const char *, QString> variables[] = {
        {"HOME", folder},
        {"XDG_RUNTIME_DIR", run},
        {"XDG_CONFIG_HOME", all.filePath(QStringLiteral("config"))},
        {"XDG_STATE_HOME", all.filePath(QStringLiteral("state"))},
        {"XDG_CACHE_HOME", all.filePath(QStringLiteral("cache"))},
        {"XDG_DATA_HOME", all.filePath(QStringLiteral("data"))},
        {"DBUS_SESSION_BUS_ADDRESS", QStringLiteral("unix:path=%1/bus").arg(run)},
        {"LANG", QStringLiteral("C.UTF-8")},
        {"LC_ALL", QStringLiteral("C.UTF-8")},
        {"NO_AT_BRIDGE", QStringLiteral("1")},
        {"QT_FORCE_STDERR_LOGGING", QStringLiteral("1")},
    };
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto &[name, value] : variables) {
        environment.insert(QString::fromLatin1(name), value);
    }
    return environment;
}

QByteArray outputOf(const QProcessEnvironment &environment, const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    waitUntil([&process] { return process.state() == QProcess::NotRunning; }, programTime);
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

void wlCopy(const QProcessEnvironment &environment, const QByteArray &text, const QStringList &options)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("wl-copy"), options);
    process.write(text);
    process.closeWriteChannel();
    waitUntil([&process] { return process.state() == QProcess::NotRunning; }, programTime);
    if (!pollUntil([&] { return wlPaste(environment, options) == text; }, programTime)) {
        throw Error(QStringLiteral("wl-copy did not copy"));
    }
}

QByteArray wlPaste(const QProcessEnvironment &environment, const QStringList &options)
{
    return outputOf(environment, QStringLiteral("wl-paste"), QStringList{QStringLiteral("--no-newline")} + options);
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
