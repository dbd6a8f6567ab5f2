// The whole of Talmo on KWin, in Wayland windows. tests/Kde/run runs this; not part of ctest.

#include "KdeDesktop.h"
#include "Platform/Linux/Wayland/Keys/FakeInput.h"
#include "SoundServer.h"
#include "SpokenText.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>

#include <csignal>

#include <linux/input-event-codes.h>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

/// A window that tells on its output when it has the focus, and what text it has.
struct Target {
    enum Platform { Wayland, X };
    const char *name;
    QStringList command;
    Platform platform = Wayland;
    QString focusLine = u"focus: yes"_s;
    QString textLine = u"text: %1"_s;
};

const QString python = u"/usr/bin/python3"_s;
const Target gtk3{"Gtk3", {QStringLiteral(TALMO_BIN "/talmo-gtk-window")}};
const Target gtk4{"Gtk4", {python, QStringLiteral(TALMO_TESTS_FOLDER "/EndToEnd/gtk4_window.py")}};
const Target qt6{"Qt6", {QStringLiteral(TALMO_BIN "/talmo-qt-entry-window")}};
const Target xProgram{"XWayland", {QStringLiteral(TALMO_BIN "/talmo-gtk-window")}, Target::X};
const Target terminal{"Terminal",
                      {python, QStringLiteral(TALMO_TESTS_FOLDER "/Gnome/text_window.py"), u"terminal"_s},
                      Target::Wayland,
                      u"\"focus\": true"_s,
                      u"\"text\": \"%1\""_s};

class KdeTest : public testing::Test {
protected:
    static constexpr testbed::Timeout timeout = 60s;

    void SetUp() override { ASSERT_TRUE(testbed::KdeDesktop::isPossible()) << "start this with tests/Kde/run"; }
    void start(const QStringList &trusted, const Target &target = gtk3)
    {
        desktop.emplace(trusted);
        environment = desktop->environment();
        environment.insert(u"QT_LOGGING_RULES"_s, u"talmo.general.debug=true"_s);
        openWindow(target);
    }
    void openWindow(const Target &target)
    {
        auto its = environment;
        its.insert(u"GDK_BACKEND"_s, target.platform == Target::X ? u"x11"_s : u"wayland"_s);
        its.insert(u"QT_QPA_PLATFORM"_s, target.platform == Target::X ? u"xcb"_s : u"wayland"_s);
        window = std::make_unique<testbed::ChildProcess>(target.command.first(), target.command.mid(1), its);
        ASSERT_TRUE(window->waitForLine(target.focusLine, timeout)) << window->output().toStdString();
    }
    void signalWindow(int signal) { ASSERT_EQ(::kill(static_cast<pid_t>(window->processId()), signal), 0); }
    void startTalmo()
    {
        sound.emplace(desktop->folder() + u"/sound"_s, environment);
        talmo = std::make_unique<testbed::ChildProcess>(QStringLiteral(TALMO_BIN "/talmo"), QStringList(), environment);
        ASSERT_TRUE(talmoSays(u"ready: hold"_s));
    }
    void TearDown() override
    {
        if (HasFailure() && talmo) {
            ADD_FAILURE() << "Talmo's log:\n" << talmo->output().toStdString();
        }
    }
    bool talmoSays(const QString &text) { return talmo->waitForLine(text, timeout).has_value(); }
    bool windowShows(const QString &text) { return window->waitForLine(u"text: "_s + text, timeout).has_value(); }
    struct Outcome {
        int status = -1;
        std::string errors;
    };
    Outcome talmoctl(const QStringList &arguments, const QByteArray &input = {})
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TALMO_BIN "/talmoctl"), arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(testbed::waitUntil([&process] { return process.state() == QProcess::NotRunning; }, timeout));
        return {process.exitCode(), process.readAllStandardError().toStdString()};
    }
    /// Whether KDE watches Talmo's key now.
    bool isShortcutActive()
    {
        auto bus = QDBusConnection::connectToBus(environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s), u"kde-test"_s);
        const auto reply = bus.call(QDBusMessage::createMethodCall(u"org.kde.kglobalaccel"_s, u"/component/talmo"_s,
                                                                   u"org.kde.kglobalaccel.Component"_s, u"isActive"_s));
        return reply.arguments().value(0).toBool();
    }
    /// The middle of the overlay's place.
    QImage overlayPlace()
    {
        constexpr QSize size(200, 30);
        const auto all = desktop->screenshot();
        return all.copy(QRect(QPoint((all.width() - size.width()) / 2, all.height() - 130), size));
    }

    std::optional<testbed::KdeDesktop> desktop;
    QProcessEnvironment environment;
    std::optional<testbed::SoundServer> sound;
    std::unique_ptr<testbed::ChildProcess> window;
    std::unique_ptr<testbed::ChildProcess> talmo;
};

} // namespace

TEST_F(KdeTest, insertsWithoutTalmoAndRestoresClipboard)
{
    start({QStringLiteral(TALMO_BIN "/talmoctl")});
    desktop->copy("clipboard before");
    const auto outcome = talmoctl({u"insert"_s}, "by hand");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(windowShows(u"by hand"_s)) << window->output().toStdString();
    EXPECT_TRUE(testbed::pollUntil([this] { return desktop->paste() == "clipboard before"; }, timeout));
}

TEST_F(KdeTest, imageOfMegabytesOnClipboardIsRestored)
{
    start({QStringLiteral(TALMO_BIN "/talmoctl")});
    QByteArray large(2500000, '\0');
    for (qsizetype index = 0; index < large.size(); ++index) {
        large[index] = static_cast<char>(index * 7);
    }
    desktop->copy(large, u"image/png"_s);
    EXPECT_EQ(talmoctl({u"insert"_s}, "by hand").status, 0);
    EXPECT_TRUE(windowShows(u"by hand"_s)) << window->output().toStdString();
    EXPECT_TRUE(testbed::pollUntil([&] { return desktop->paste(u"image/png"_s) == large; }, timeout));
}

TEST_F(KdeTest, windowThatFreezesForAWhileGetsText)
{
    start({QStringLiteral(TALMO_BIN "/talmo")});
    startTalmo();
    desktop->copy("clipboard before");
    signalWindow(SIGSTOP);
    QProcess insertion;
    insertion.setProcessEnvironment(environment);
    insertion.start(QStringLiteral(TALMO_BIN "/talmoctl"), {u"insert"_s});
    insertion.write("by hand");
    insertion.closeWriteChannel();
    testbed::sleepFor(400ms); // A read of the clipboard, to see how far it is, would count as the window's.
    signalWindow(SIGCONT);
    EXPECT_TRUE(windowShows(u"by hand"_s)) << window->output().toStdString();
    EXPECT_FALSE(window->output().contains(u"clipboard before"_s));
    EXPECT_TRUE(testbed::waitUntil([&] { return insertion.state() == QProcess::NotRunning; }, timeout));
}

TEST_F(KdeTest, dictatesWithBoundCommands)
{
    start({QStringLiteral(TALMO_BIN "/talmo")});
    startTalmo();
    desktop->copy("clipboard before");
    const QImage before = overlayPlace();
    const auto lines = window->lines().size();
    EXPECT_EQ(talmoctl({u"press"_s}).status, 0);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    EXPECT_TRUE(testbed::pollUntil([&] { return overlayPlace() != before; }, timeout)) << "no overlay";
    sound->play(testbed::speak(u"hello world"_s, desktop->folder()));
    EXPECT_EQ(talmoctl({u"release"_s}).status, 0);
    EXPECT_TRUE(windowShows(u"Hello world."_s)) << window->output().toStdString();
    EXPECT_FALSE(window->output().contains(u"focus: no"_s)) << "the focus was taken";
    EXPECT_EQ(window->lines().size(), lines + 1) << window->output().toStdString();
    EXPECT_TRUE(testbed::pollUntil([this] { return desktop->paste() == "clipboard before"; }, timeout));
    EXPECT_TRUE(testbed::pollUntil([&] { return overlayPlace() == before; }, timeout)) << "the overlay stays";
}

TEST_F(KdeTest, dictatesHandsFreeWithPauseKey)
{
    start({QStringLiteral(TALMO_BIN "/talmo"), QCoreApplication::applicationFilePath()});
    startTalmo();
    EXPECT_TRUE(talmoSays(u"ready: hold Pause"_s));
    for (const auto *name : {"WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) {
        qputenv(name, environment.value(QString::fromLatin1(name)).toUtf8());
    }
    const auto session = WaylandSession::open();
    ASSERT_NE(session, nullptr);
    std::unique_ptr<FakeInput> keyboard;
    const auto tap = [&] {
        session->executor()
            .call([&] {
                keyboard = keyboard ? std::move(keyboard) : FakeInput::open(*session);
                keyboard->post({KEY_PAUSE});
                session->flush();
            })
            .waitForFinished();
    };
    tap();
    tap();
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    sound->play(testbed::speak(u"hello world"_s, desktop->folder()));
    tap();
    EXPECT_TRUE(windowShows(u"Hello world."_s)) << window->output().toStdString();
    EXPECT_FALSE(window->output().contains(u"focus: no"_s)) << "the focus was taken";
    session->executor().call([&] { keyboard.reset(); }).waitForFinished();
}

TEST_F(KdeTest, insertFailsWithSentenceWithoutWindow)
{
    start({QStringLiteral(TALMO_BIN "/talmoctl")});
    window.reset();
    const auto outcome = talmoctl({u"insert"_s}, "lost");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("No window has keyboard focus"), std::string::npos) << outcome.errors;
    EXPECT_EQ(desktop->paste(), "lost");
}

TEST_F(KdeTest, untrustedInsertFailsAndLeavesTextOnClipboard)
{
    start({});
    const auto outcome = talmoctl({u"insert"_s}, "not trusted");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("Copied: press"), std::string::npos) << outcome.errors;
    EXPECT_EQ(desktop->paste(), "not trusted");
    EXPECT_FALSE(window->output().contains(u"not trusted"_s));
}

TEST_F(KdeTest, untrustedTalmoNamesWhatIsMissing)
{
    start({});
    startTalmo();
    EXPECT_TRUE(talmo->output().contains(u"does not let Talmo type"_s)) << talmo->output().toStdString();
}

TEST_F(KdeTest, keyIsFreeAfterCrashAndWorksAgainAfterRestart)
{
    start({QStringLiteral(TALMO_BIN "/talmo")});
    startTalmo();
    ::kill(static_cast<pid_t>(talmo->processId()), SIGKILL);
    ASSERT_TRUE(testbed::waitUntil([this] { return !talmo->isRunning(); }, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return !isShortcutActive(); }, timeout)) << "KDE keeps the key";
    talmo = std::make_unique<testbed::ChildProcess>(QStringLiteral(TALMO_BIN "/talmo"), QStringList(), environment);
    ASSERT_TRUE(talmoSays(u"ready: hold Pause"_s));
    EXPECT_TRUE(isShortcutActive());
}

class KdeTargetTest : public KdeTest, public testing::WithParamInterface<const Target *> {};

TEST_P(KdeTargetTest, getsTextKeepsFocusAndClipboardIsRestored)
{
    const auto &target = *GetParam();
    start({QStringLiteral(TALMO_BIN "/talmoctl")}, target);
    desktop->copy("clipboard before");
    const auto outcome = talmoctl({u"insert"_s}, "by hand");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(window->waitForLine(target.textLine.arg(u"by hand"_s), timeout)) << window->output().toStdString();
    EXPECT_FALSE(window->output().contains(u"focus: no"_s) || window->output().contains(u"\"focus\": false"_s));
    EXPECT_TRUE(testbed::pollUntil([this] { return desktop->paste() == "clipboard before"; }, timeout));
}

INSTANTIATE_TEST_SUITE_P(Kinds, KdeTargetTest, testing::Values(&gtk4, &qt6, &xProgram, &terminal),
                         [](const auto &tested) { return std::string(tested.param->name); });

} // namespace talmo::test
