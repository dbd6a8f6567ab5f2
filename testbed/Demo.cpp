// Demonstrates Talmo on a private desktop: a key is held, a sentence is spoken into the microphone, and the text
// appears in a window. Then the menu and the settings are opened. Screenshots are taken at each step.

#include "ChildProcess.h"
#include "DesktopParts.h"
#include "SoundServer.h"
#include "SpokenText.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"
#include "VirtualPointer.h"

#include "Base/Error.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QImage>

#include <algorithm>
#include <cstdio>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;
using Time = std::chrono::steady_clock::time_point;

constexpr Timeout timeout = 30s;

void say(const QString &line)
{
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

long milliseconds(Time from, Time to)
{
    return std::lround(std::chrono::duration<double, std::milli>(to - from).count());
}

ChildProcess::Line required(std::optional<ChildProcess::Line> line, const QString &what, const ChildProcess &process)
{
    if (!line) {
        throw Error(QStringLiteral("Timed out waiting for %1:\n%2").arg(what, process.output()));
    }
    return *line;
}

struct Stages {
    Time pressed;
    Time recording;
    Time released;
    Time recognised;
    Time arrived;
    QString recognisedText;
    QString insertedText;
};

QString afterMark(const QString &line, const QString &mark)
{
    return line.mid(line.indexOf(mark) + mark.size());
}

constexpr Timeout untilItIsDrawn = 300ms;

/// Takes screenshots and saves them in a folder.
class Album {
public:
    Album(VirtualDesktop &desktop, const QString &folder)
        : m_desktop(desktop),
          m_folder(folder)
    {
        m_folder.mkpath(QStringLiteral("."));
    }

    void take(const QString &name)
    {
        const QString file = m_folder.absoluteFilePath(name + QStringLiteral(".png"));
        if (!m_desktop.screenshot().save(file)) {
            throw Error(QStringLiteral("Cannot save a screenshot to ") + file);
        }
        say(QStringLiteral("  screenshot: %1").arg(file));
    }

private:
    VirtualDesktop &m_desktop;
    QDir m_folder;
};

Stages dictate(SoundServer &sound, VirtualKeyboard &keyboard, ChildProcess &talmo, ChildProcess &window,
               const QString &wav, Album &album)
{
    Stages stages;
    stages.pressed = std::chrono::steady_clock::now();
    keyboard.press(VirtualKeyboard::controlRight);
    stages.recording =
        required(talmo.waitForLine(QStringLiteral("state: recording"), timeout), QStringLiteral("the recording"), talmo)
            .time;
    sound.play(wav);
    album.take(QStringLiteral("overlay"));
    stages.released = std::chrono::steady_clock::now();
    keyboard.release(VirtualKeyboard::controlRight);
    const QString rawMark = QStringLiteral("raw transcript: ");
    const auto raw = required(talmo.waitForLine(rawMark, timeout), QStringLiteral("the transcript"), talmo);
    stages.recognised = raw.time;
    stages.recognisedText = afterMark(raw.text, rawMark);
    const QString textMark = QStringLiteral("text: ");
    const auto text = required(window.waitForLine(textMark, timeout), QStringLiteral("the inserted text"), talmo);
    stages.arrived = text.time;
    stages.insertedText = afterMark(text.text, textMark);
    return stages;
}

/// Waits until one of Talmo's unmanaged windows that is larger than an icon is shown, or until none is.
bool waitForCard(VirtualDesktop &desktop, bool isShown)
{
    constexpr int widestIcon = 100;
    const auto isCard = [](const VirtualDesktop::Window &window) {
        return window.program == "talmo" && !window.isManaged && window.geometry.width() > widestIcon;
    };
    return pollUntil(
        [&] {
            const auto windows = desktop.visibleWindows();
            return std::any_of(windows.cbegin(), windows.cend(), isCard) == isShown;
        },
        timeout);
}

void showMenuAndSettings(VirtualDesktop &desktop, const QProcessEnvironment &environment, const QString &talmoProgram,
                         Album &album)
{
    constexpr quint32 escape = 0xff1b;
    VirtualPointer pointer;
    VirtualKeyboard keyboard;
    const QSize size = desktop.screenshot().size();
    pointer.clickAt({size.width() - 12, 12});
    if (!waitForCard(desktop, true)) {
        throw Error(QStringLiteral("The menu did not open."));
    }
    sleepFor(untilItIsDrawn);
    album.take(QStringLiteral("menu"));
    keyboard.tap(escape);
    waitForCard(desktop, false);
    ChildProcess second(talmoProgram, {}, environment);
    if (!desktop.waitForActiveWindow(QStringLiteral("Talmo Settings"), timeout)) {
        throw Error(QStringLiteral("The settings did not open: ") + second.output());
    }
    sleepFor(untilItIsDrawn);
    album.take(QStringLiteral("settings"));
}

void report(const Stages &stages)
{
    say(QStringLiteral("  key pressed → recording         %1 ms (including 150 ms to tell a hold from a tap)")
            .arg(milliseconds(stages.pressed, stages.recording)));
    say(QStringLiteral("  speech                          %1 ms").arg(milliseconds(stages.recording, stages.released)));
    say(QStringLiteral("  key released → transcript       %1 ms")
            .arg(milliseconds(stages.released, stages.recognised)));
    say(QStringLiteral("  transcript → text in window     %1 ms").arg(milliseconds(stages.recognised, stages.arrived)));
    say(QStringLiteral("  key released → text in window   %1 ms").arg(milliseconds(stages.released, stages.arrived)));
}

int run(const QString &sentence, const QString &pictureFolder)
{
    const QDir programs(QCoreApplication::applicationDirPath());
    say(QStringLiteral("Starting a private desktop: X server, window manager, tray, compositor, sound server …"));
    VirtualDesktop desktop;
    auto environment = desktop.environment();
    const auto compositor = startCompositor(environment);
    const auto tray = startTray(environment);
    SoundServer sound(desktop.folder() + QStringLiteral("/sound"), environment);
    Album album(desktop, pictureFolder);

    say(QStringLiteral("Opening a text window and starting Talmo …"));
    const QString title = QStringLiteral("Notes");
    ChildProcess window(programs.filePath(QStringLiteral("talmo-demo-window")), {title}, environment);
    if (!desktop.waitForActiveWindow(title, timeout)) {
        throw Error(QStringLiteral("The text window did not open:\n") + window.output());
    }
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("talmo.general.debug=true"));
    const QString talmoProgram = programs.filePath(QStringLiteral("talmo"));
    ChildProcess talmo(talmoProgram, {}, environment);
    required(talmo.waitForLine(QStringLiteral("ready:"), timeout), QStringLiteral("Talmo to start"), talmo);

    say(QStringLiteral("Holding Right Ctrl and saying “%1” …").arg(sentence));
    const QString wav = speak(sentence, desktop.folder());
    VirtualKeyboard keyboard;
    const Stages stages = dictate(sound, keyboard, talmo, window, wav, album);
    if (!waitForCard(desktop, false)) {
        throw Error(QStringLiteral("The dictation did not end:\n") + talmo.output());
    }
    sleepFor(untilItIsDrawn);

    report(stages);
    album.take(QStringLiteral("dictation"));
    say(QStringLiteral("Opening the menu and the settings …"));
    showMenuAndSettings(desktop, environment, talmoProgram, album);
    if (talmo.terminate() != 0) {
        throw Error(QStringLiteral("Talmo did not exit cleanly:\n") + talmo.output());
    }
    say(QStringLiteral("recognised: ") + stages.recognisedText);
    say(QStringLiteral("inserted: ") + stages.insertedText);
    return stages.insertedText.isEmpty() ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace

} // namespace talmo::testbed

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Dictates a sentence on a private desktop."));
    parser.addHelpOption();
    const QCommandLineOption sayOption(QStringLiteral("say"), QStringLiteral("The sentence to speak."),
                                       QStringLiteral("TEXT"),
                                       QStringLiteral("the computer does not start after the last update"));
    const QCommandLineOption pictureOption(QStringLiteral("pictures"),
                                           QStringLiteral("The folder to save screenshots in."),
                                           QStringLiteral("FOLDER"), QStringLiteral("talmo-demo"));
    parser.addOptions({sayOption, pictureOption});
    parser.process(application);
    try {
        return talmo::testbed::run(parser.value(sayOption), parser.value(pictureOption));
    } catch (const talmo::Error &error) {
        std::fprintf(stderr, "demo: %s\n", qUtf8Printable(error.localizedDescription()));
        return EXIT_FAILURE;
    }
}
