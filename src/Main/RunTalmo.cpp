#include "Main/RunTalmo.h"

#include "Base/Application.h"
#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Control/ControlSocket.h"
#include "Main/TalmoApp.h"
#include "Platform/Desktop.h"
#include "Platform/Linux/Session/SessionBus.h"
#include "Platform/Linux/System/LinuxWording.h"
#include "Platform/Linux/System/QuitSignals.h"
#include "Platform/Linux/System/SingleInstance.h"
#include "Platform/Linux/System/Watchdog.h"
#include "Settings/TalmoSettings.h"

#include <QApplication>
#include <QEventLoop>
#include <QFutureWatcher>
#include <QIcon>
#include <QSessionManager>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace talmo {

namespace {

constexpr int usageStatus = 2;

/// A shutdown that hangs, in a library or over a lock, is ended by the kernel after this many seconds: longer than a
/// sentence may take to be finished.
constexpr unsigned longestShutdown = 15;
/// The same after a second request to quit.
constexpr unsigned longestRepeatedShutdown = 5;

/// Shuts the program down once, however often that is requested.
class Ending final {
public:
    explicit Ending(TalmoApp &app)
        : m_app(app)
    {
    }

    void begin()
    {
        if (std::exchange(m_hasBegun, true)) {
            killProcessAfter(longestRepeatedShutdown);
            return;
        }
        killProcessAfter(longestShutdown);
        logEscapes(quit(&m_app));
    }

    /// For an event loop that something else ended, such as a session manager.
    void completeAfterLoop()
    {
        if (!m_hasBegun) {
            begin();
            QCoreApplication::exec();
        }
    }

private:
    static QCoro::Task<void> quit(TalmoApp *app)
    {
        co_await app->shutDown();
        QCoreApplication::quit();
    }

    TalmoApp &m_app;
    bool m_hasBegun = false;
};

void quitWhenAsked(Ending &ending, TalmoApp &app, QuitSignals &signalsToQuit)
{
    const auto begin = [&ending] { ending.begin(); };
    QObject::connect(&signalsToQuit, &QuitSignals::quitRequested, &app, begin);
    QObject::connect(&app, &TalmoApp::quitRequested, &app, begin, Qt::QueuedConnection);
}

/// The session waits for its programs to save what they have; for Talmo that is the sentence under way.
void finishBeforeLogout(QGuiApplication &application, TalmoApp &app)
{
    const auto finish = [&app] {
        const QFuture<bool> finishing = app.finishDictation();
        QEventLoop loop;
        QFutureWatcher<bool> watcher;
        QObject::connect(&watcher, &QFutureWatcher<bool>::finished, &loop, &QEventLoop::quit);
        watcher.setFuture(finishing);
        if (!finishing.isFinished()) {
            loop.exec();
        }
    };
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &app, finish, Qt::DirectConnection);
}

int letTheFirstShowItsSettings()
{
    if (!SingleInstance::askForSettings()) {
        std::fprintf(stderr,
                     "talmo: Talmo is already running on this display but does not respond; end it, then try again\n");
        return EXIT_FAILURE;
    }
    std::fprintf(stderr, "talmo: Talmo is already running; opened its settings window\n");
    return EXIT_SUCCESS;
}

/// A session that brings back what ran when it ended would start a second Talmo beside the one started at login.
void leaveStartingToTheDesktop(QGuiApplication &application)
{
    const auto leave = [](QSessionManager &manager) { manager.setRestartHint(QSessionManager::RestartNever); };
    QObject::connect(&application, &QGuiApplication::saveStateRequest, &application, leave, Qt::DirectConnection);
}

/// Needs no display, so that it works for packagers, in scripts and on a console.
int answerArguments(int argc, char **argv)
{
    const QByteArray argument = argv[1];
    const bool isAlone = argc == 2;
    if (isAlone && (argument == "--help" || argument == "-h")) {
        std::fputs("Usage: talmo\n\n"
                   "Dictate into any window: hold a key, speak, release it.\n"
                   "If Talmo is already running, its settings open.\n\n"
                   "Options:\n"
                   "  --help               Show this help.\n"
                   "  --version            Show the version.\n\n"
                   "talmoctl runs the single steps of a dictation from the command line.\n",
                   stdout);
        return EXIT_SUCCESS;
    }
    if (isAlone && (argument == "--version" || argument == "-v")) {
        std::fputs("talmo " TALMO_VERSION "\n", stdout);
        return EXIT_SUCCESS;
    }
    std::fprintf(stderr, "talmo: “%s” is not an option; try “talmo --help”\n", argv[isAlone ? 1 : 2]);
    return usageStatus;
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
        return answerArguments(argc, argv);
    }
    QuitSignals::install();
    try {
        prepareDesktop();
    } catch (const Error &error) {
        return fail(error);
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
        Ending ending(app);
        quitWhenAsked(ending, app, signalsToQuit);
        finishBeforeLogout(application, app);
        generalLog().info("ready: hold %s and speak", {TalmoSettings::shared()->hotkeyDisplayName()});
        const int status = QApplication::exec();
        ending.completeAfterLoop();
        return status;
    } catch (const Error &error) {
        return fail(error);
    }
}

} // namespace talmo
