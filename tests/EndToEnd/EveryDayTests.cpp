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
