// The whole of Talmo on sway, in Wayland windows.

#include "DesktopParts.h"
#include "SettingsFile.h"
#include "SoundServer.h"
#include "SpokenText.h"
#include "Support/Printing.h"
#include "WaylandDesktop.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>

#include <csignal>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

class WaylandEndToEndTest : public testing::Test {
protected:
    using Key = testbed::WaylandDesktop::KeyboardKey;
    /// Long enough for recognition on a busy machine; nothing waits for its end in vain unless the test fails.
    static constexpr testbed::Timeout timeout = 60s;

    void SetUp() override
    {
        if (!testbed::WaylandDesktop::isInstalled()) {
            GTEST_SKIP() << "sway is not installed";
        }
        desktop.emplace();
        environment = desktop->environment();
        environment.insert(u"QT_LOGGING_RULES"_s, u"talmo.general.debug=true"_s);
        bus = testbed::startBus(environment);
        sound.emplace(desktop->folder() + u"/sound"_s, environment);
        window = std::make_unique<testbed::ChildProcess>(QStringLiteral(TALMO_BIN "/talmo-gtk-window"), QStringList(),
                                                         environment);
        ASSERT_TRUE(desktop->waitForActiveWindow(u"Target"_s, timeout));
        startTalmo();
    }
    void startTalmo()
    {
        talmo = std::make_unique<testbed::ChildProcess>(QStringLiteral(TALMO_BIN "/talmo"), QStringList(), environment);
        ASSERT_TRUE(talmoSays(u"ready: hold Pause"_s));
    }
    void TearDown() override
    {
        if (HasFailure() && talmo) {
            ADD_FAILURE() << "Talmo's log:\n" << talmo->output().toStdString();
        }
    }
    bool talmoSays(const QString &text) { return talmo->waitForLine(text, timeout).has_value(); }
    bool windowShows(const QString &text) { return window->waitForLine(u"text: "_s + text, timeout).has_value(); }
    void speak(const QString &text) { sound->play(testbed::speak(text, desktop->folder())); }
    int talmoctl(const QString &command, const QByteArray &input = {})
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(TALMO_BIN "/talmoctl"), {command});
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(testbed::waitUntil([&process] { return process.state() == QProcess::NotRunning; }, timeout));
        return process.exitCode();
    }
    /// The middle of the overlay's place.
    QImage overlayPlace()
    {
        constexpr QSize size(200, 30);
        const auto all = desktop->screenshot();
        return all.copy(QRect(QPoint((all.width() - size.width()) / 2, all.height() - 130), size));
    }

    std::optional<testbed::WaylandDesktop> desktop;
    QProcessEnvironment environment;
    std::unique_ptr<testbed::ChildProcess> bus;
    std::optional<testbed::SoundServer> sound;
    std::unique_ptr<testbed::ChildProcess> window;
    std::unique_ptr<testbed::ChildProcess> talmo;
};

} // namespace

TEST_F(WaylandEndToEndTest, holdInsertsSentenceAndRestoresClipboard)
{
    desktop->copy("clipboard before");
    const QImage before = overlayPlace();
    desktop->press(Key::Pause);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    EXPECT_TRUE(testbed::pollUntil([&] { return overlayPlace() != before; }, timeout)) << "no overlay";
    EXPECT_EQ(desktop->activeWindowTitle(), u"Target"_s) << "the overlay took the focus";
    speak(u"hello world"_s);
    desktop->release(Key::Pause);
    EXPECT_TRUE(windowShows(u"Hello world."_s)) << window->output().toStdString();
    EXPECT_TRUE(testbed::pollUntil([this] { return desktop->paste() == "clipboard before"; }, timeout));
    EXPECT_TRUE(testbed::pollUntil([&] { return overlayPlace().pixel(1, 1) == before.pixel(1, 1); }, timeout))
        << "the overlay stays";
}

TEST_F(WaylandEndToEndTest, dictatesIntoOwnWelcomeAtFirstStart)
{
    EXPECT_EQ(talmo->terminate(), 0);
    window.reset();
    testbed::writeTalmoSettings(desktop->folder(), {{u"linux.welcomeShown"_s, false}});
    startTalmo();
    ASSERT_TRUE(desktop->waitForActiveWindow(u"Welcome to Talmo"_s, timeout));
    desktop->press(Key::Pause);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    const auto before = talmo->lines().size();
    desktop->release(Key::Pause);
    EXPECT_TRUE(talmo->waitForLine(u"state: idle"_s, timeout, before));
    EXPECT_FALSE(talmo->output().contains(u"state: error"_s)) << "the field did not take the text";
}

TEST_F(WaylandEndToEndTest, boundCommandsDictate)
{
    EXPECT_EQ(talmoctl(u"press"_s), 0);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    EXPECT_EQ(talmoctl(u"release"_s), 0);
    EXPECT_TRUE(windowShows(u"Hello world."_s)) << window->output().toStdString();
}

TEST_F(WaylandEndToEndTest, toggleBeginsAndEndsRecording)
{
    EXPECT_EQ(talmoctl(u"toggle"_s), 0);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    EXPECT_EQ(talmoctl(u"toggle"_s), 0);
    EXPECT_TRUE(windowShows(u""_s)) << "no sentence was inserted";
}

TEST_F(WaylandEndToEndTest, cancelDiscardsRecordingAndNotifiesWatch)
{
    testbed::ChildProcess watch(QStringLiteral(TALMO_BIN "/talmoctl"), {u"watch"_s, u"--json"_s}, environment);
    ASSERT_TRUE(watch.waitForLine(u"{\"state\":\"idle\"}"_s, timeout)) << watch.output().toStdString();
    EXPECT_EQ(talmoctl(u"toggle"_s), 0);
    ASSERT_TRUE(watch.waitForLine(u"{\"state\":\"recording\"}"_s, timeout));
    EXPECT_EQ(talmoctl(u"cancel"_s), 0);
    ASSERT_TRUE(watch.waitForLine(u"{\"state\":\"idle\"}"_s, timeout, 2));
    EXPECT_EQ(talmoctl(u"cancel"_s), 0); // Of nothing.
    EXPECT_EQ(talmoctl(u"status"_s), 0);
    EXPECT_EQ(talmo->terminate(), 0);
    ASSERT_TRUE(testbed::waitUntil([&watch] { return !watch.isRunning(); }, timeout));
    EXPECT_EQ(watch.lines().size(), 3U) << watch.output().toStdString();
}

TEST_F(WaylandEndToEndTest, callOverSessionBusStartsTalmo)
{
    EXPECT_EQ(talmo->terminate(), 0);
    const QString services = desktop->folder() + u"/data/dbus-1/services"_s;
    QDir().mkpath(services);
    QFile service(services + u"/io.github.talmo.Talmo.service"_s);
    ASSERT_TRUE(service.open(QFile::WriteOnly));
    service.write("[D-BUS Service]\nName=io.github.talmo.Talmo\nExec=" TALMO_BIN "/talmo\n");
    service.close();
    auto connection =
        QDBusConnection::connectToBus(environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s), u"starting-talmo"_s);
    const QString busName = u"org.freedesktop.DBus"_s;
    connection.call(QDBusMessage::createMethodCall(busName, u"/org/freedesktop/DBus"_s, busName, u"ReloadConfig"_s));
    const auto reply =
        connection.call(QDBusMessage::createMethodCall(u"io.github.talmo.Talmo"_s, u"/io/github/talmo/Talmo"_s,
                                                       u"io.github.talmo.Talmo1"_s, u"Status"_s),
                        QDBus::Block, static_cast<int>(std::chrono::milliseconds(timeout).count()));
    EXPECT_EQ(reply.arguments().value(0).toString(), u"idle"_s) << reply.errorMessage().toStdString();
    const auto pid = connection.interface()->servicePid(u"io.github.talmo.Talmo"_s);
    ASSERT_TRUE(pid.isValid());
    ASSERT_GT(pid.value(), 1U);
    EXPECT_EQ(::kill(static_cast<pid_t>(pid.value()), SIGTERM), 0);
    EXPECT_TRUE(testbed::pollUntil(
        [&] { return !connection.interface()->isServiceRegistered(u"io.github.talmo.Talmo"_s); }, timeout));
}

TEST_F(WaylandEndToEndTest, insertsWithoutTalmo)
{
    desktop->copy("clipboard before");
    EXPECT_EQ(talmo->terminate(), 0);
    EXPECT_EQ(talmoctl(u"insert"_s, "by hand"), 0);
    EXPECT_TRUE(windowShows(u"by hand"_s)) << window->output().toStdString();
    EXPECT_TRUE(testbed::pollUntil([this] { return desktop->paste() == "clipboard before"; }, timeout));
}

TEST_F(WaylandEndToEndTest, insertFailsWithSentenceIfNothingTakesText)
{
    window.reset();
    ASSERT_TRUE(testbed::pollUntil([this] { return desktop->activeWindowTitle().isEmpty(); }, timeout));
    EXPECT_EQ(talmoctl(u"insert"_s, "lost"), 1);
    EXPECT_EQ(desktop->paste(), "lost");
}

} // namespace talmo::test
