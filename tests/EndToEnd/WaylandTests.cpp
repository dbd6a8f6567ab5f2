// The whole of Talmo on sway, in Wayland windows.

#include "SettingsFile.h"
#include "SoundServer.h"
#include "SpokenText.h"
#include "Support/Printing.h"
#include "WaylandDesktop.h"

#include <gtest/gtest.h>

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
