// Several dictations in a row, as on an ordinary day.

#include "EndToEnd/TalmoFixture.h"

#include "Support/Printing.h"

namespace talmo::test {

using namespace std::chrono_literals;
namespace {

constexpr quint32 escapeKey = 0xff1b;

} // namespace

using EveryDayEndToEndTest = TalmoFixture;

TEST_F(EveryDayEndToEndTest, secondDictationIsSeparatedUnlessUserTyped)
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(windowShows(u"Hello world."_s));
    ASSERT_TRUE(talmoSays(u"state: idle"_s));
    testbed::sleepFor(350ms); // Longer than the double-tap window.
    dictate(u"hello world"_s);
    ASSERT_TRUE(windowShows(u"Hello world. Hello world."_s));
    ASSERT_TRUE(talmoSays(u"state: idle"_s));
    keyboard.tap('x');
    ASSERT_TRUE(windowShows(u"Hello world. Hello world.x"_s));
    testbed::sleepFor(350ms);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world. Hello world.xHello world."_s));
}

TEST_F(EveryDayEndToEndTest, traceShowsEveryStageOfLastDictation)
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(windowShows(u"Hello world."_s));
    QString table;
    EXPECT_TRUE(testbed::pollUntil(
        [&] {
            testbed::ChildProcess talmoctl(QStringLiteral(TALMO_BIN "/talmoctl"), {u"trace"_s}, environment);
            testbed::pollUntil([&] { return !talmoctl.isRunning(); }, timeout);
            table = talmoctl.output();
            return table.contains(u"clipboard restored"_s);
        },
        timeout))
        << qPrintable(table);
    for (const auto *stage : {"key pressed ", "recording ", "key released ", "last audio ", "text recognised ",
                              "text cleaned up ", "text on the clipboard ", "paste shortcut posted ", "text read "}) {
        EXPECT_TRUE(table.contains(QLatin1String(stage))) << stage << '\n' << qPrintable(table);
    }
}

TEST_F(EveryDayEndToEndTest, escapeDiscardsRecordingAndReachesNoWindow)
{
    openQtWindow();
    startTalmo();
    doubleTap();
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"thank you very much"_s);
    keyboard.tap(escapeKey);
    EXPECT_TRUE(talmoSays(u"the recording was discarded"_s));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    testbed::sleepFor(350ms); // Longer than the double-tap window.
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

TEST_F(EveryDayEndToEndTest, pausedKeyDoesNothingUntilResumed)
{
    const auto talmoctl = [this](const QString &command) {
        testbed::ChildProcess process(QStringLiteral(TALMO_BIN "/talmoctl"), {command}, environment);
        EXPECT_TRUE(testbed::waitUntil([&process] { return !process.isRunning(); }, timeout));
    };
    openQtWindow();
    startTalmo();
    talmoctl(u"pause"_s);
    keyboard.press(key);
    testbed::sleepFor(500ms); // Much longer than a hold takes to begin.
    keyboard.release(key);
    EXPECT_FALSE(talmo->output().contains(u"state: "_s));
    talmoctl(u"resume"_s);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

TEST_F(EveryDayEndToEndTest, pausingFinishesHandsFreeRecording)
{
    openQtWindow();
    startTalmo();
    doubleTap();
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    testbed::ChildProcess pause(QStringLiteral(TALMO_BIN "/talmoctl"), {u"pause"_s}, environment);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

} // namespace talmo::test
