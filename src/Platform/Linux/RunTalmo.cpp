#include "Platform/RunTalmo.h"

#include "Base/Application.h"
#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Platform/Linux/ControlSocket.h"
#include "Platform/Linux/LinuxWording.h"
#include "Platform/Linux/QuitSignals.h"
#include "Platform/Linux/SingleInstance.h"
#include "Platform/Linux/TalmoApp.h"
#include "Platform/Linux/XConnection.h"
#include "Settings/TalmoSettings.h"

#include <QApplication>
#include <QIcon>
#include <QSessionManager>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace talmo {

namespace {

constexpr int usageStatus = 2;

QCoro::Task<void> quit(TalmoApp *app)
{
    co_await app->shutDown();
    QCoreApplication::quit();
}

/// However many ask for the end, there is one.
void quitWhenAsked(TalmoApp &app, QuitSignals &signalsToQuit)
{
    const auto begin = [&app, isQuitting = std::make_shared<bool>(false)] {
        if (!std::exchange(*isQuitting, true)) {
            logEscapes(quit(&app));
        }
    };
    QObject::connect(&signalsToQuit, &QuitSignals::quitRequested, &app, begin);
    QObject::connect(&app, &TalmoApp::quitRequested, &app, begin, Qt::QueuedConnection);
}

int letTheFirstShowItsSettings()
{
    if (!SingleInstance::askForSettings()) {
        std::fprintf(stderr, "talmo: Talmo runs already on this display, but does not answer\n");
        return EXIT_FAILURE;
    }
    std::fprintf(stderr, "talmo: Talmo runs already; its settings are open now\n");
    return EXIT_SUCCESS;
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

/// A session that brings back what ran when it ended would start a second Talmo beside the one started at login.
void leaveStartingToTheDesktop(QGuiApplication &application)
{
    const auto leave = [](QSessionManager &manager) { manager.setRestartHint(QSessionManager::RestartNever); };
    QObject::connect(&application, &QGuiApplication::saveStateRequest, &application, leave, Qt::DirectConnection);
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
    const SingleInstance instance(ControlSocket::lockPath());
    if (!instance.isFirst()) {
        return letTheFirstShowItsSettings();
    }
    keepFromStartingABus();
    QApplication application(argc, argv);
    QApplication::setDesktopFileName(bundleIdentifier());
    QApplication::setApplicationName(QStringLiteral("Talmo"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/%1.svg").arg(bundleIdentifier())));
    leaveStartingToTheDesktop(application);
    installWording();
    try {
        QuitSignals signalsToQuit;
        TalmoApp app;
        app.start();
        quitWhenAsked(app, signalsToQuit);
        generalLog().info("ready: hold %s and speak", {TalmoSettings::shared()->hotkeyDisplayName()});
        return QApplication::exec();
    } catch (const Error &error) {
        return fail(error);
    }
}

} // namespace talmo
