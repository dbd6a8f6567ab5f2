#include "Platform/RunTalmo.h"

#include "Base/Application.h"
#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Platform/Linux/QuitSignals.h"
#include "Platform/Linux/TalmoApp.h"
#include "Platform/Linux/XConnection.h"
#include "Settings/TalmoSettings.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace talmo {

namespace {

constexpr int usageStatus = 2;

QCoro::Task<void> quit(TalmoApp *app)
{
    co_await app->shutDown();
    QCoreApplication::quit();
}

/// Where there is no session bus, the D-Bus library would start one of its own, and the main thread would wait for that
/// while keys go unseen. Told where the bus of this user would be, it finds none and goes on.
void keepFromStartingABus()
{
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
        const QByteArray folder =
            qEnvironmentVariableIsSet("XDG_RUNTIME_DIR") ? qgetenv("XDG_RUNTIME_DIR") : "/nonexistent";
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + folder + "/bus");
    }
}

int fail(const Error &error)
{
    std::fprintf(stderr, "talmo: %s\n", qUtf8Printable(error.localizedDescription()));
    return EXIT_FAILURE;
}

} // namespace

int runTalmo(int argc, char **argv)
{
    if (argc > 1) {
        std::fprintf(stderr, "talmo: there are no options; talmoctl is for the command line\n");
        return usageStatus;
    }
    QuitSignals::holdBack();
    try {
        const XConnection probe; // Qt ends the process without a display; a sentence is better.
    } catch (const Error &error) {
        return fail(error);
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    keepFromStartingABus();
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName(bundleIdentifier());
    QGuiApplication::setApplicationName(QStringLiteral("Talmo"));
    try {
        QuitSignals signalsToQuit;
        TalmoApp app;
        app.start();
        QObject::connect(
            &signalsToQuit, &QuitSignals::quitRequested, &app, [&app] { logEscapes(quit(&app)); },
            Qt::SingleShotConnection);
        generalLog().info("ready: hold %s and speak", {TalmoSettings::shared()->hotkeyDisplayName()});
        return QGuiApplication::exec();
    } catch (const Error &error) {
        return fail(error);
    }
}

} // namespace talmo
