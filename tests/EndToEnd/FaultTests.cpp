// After each of these the next dictation works.

#include "EndToEnd/TalmoRun.h"

#include "SpokenText.h"
#include "Support/Printing.h"

#include <csignal>

namespace talmo::test {

using namespace std::chrono_literals;
using FaultRun = TalmoRun;

namespace {

/// Longer than a double-tap's window: a press before it is over would be a second tap.
constexpr rig::Patience apart = 350ms;

void pauseBetweenPresses()
{
    rig::passTime(apart);
}

} // namespace

TEST_F(FaultRun, aSoundServerThatDiesInMidSentenceLosesNothingThatWasHeard)
{
    openQtWindow();
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    sound->killServer();
    keyboard.release(key);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    sound->restartServer();
    pauseBetweenPresses();
    dictate(u"thank you very much"_s);
    EXPECT_TRUE(windowShows(u"Hello world.Thank you very much."_s));
}

TEST_F(FaultRun, withoutAMicrophoneSaysSo)
{
    openQtWindow();
    startTalmo();
    sound->removeMicrophone();
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: No microphone input is available."_s));
    keyboard.release(key);
    sound->addMicrophone();
    pauseBetweenPresses();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

TEST_F(FaultRun, aClipboardOwnerThatHangsDelaysThePasteByHalfASecondAtMost)
{
    const QString image = desktop.folder() + u"/image"_s;
    rig::ChildProcess owner(QStringLiteral(TALMO_BIN "/talmo-clipboard-owner"), {image}, environment);
    ASSERT_TRUE(owner.waitForLine(u"owned"_s, patience));
    openQtWindow();
    startTalmo();
    ::kill(static_cast<pid_t>(owner.processId()), SIGSTOP);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    ::kill(static_cast<pid_t>(owner.processId()), SIGCONT);
}

TEST_F(FaultRun, aWindowThatClosesBeforeThePasteCostsNothingElse)
{
    openQtWindow();
    startTalmo();
    copy(u"clipboard before"_s);
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    window.reset();
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_TRUE(rig::pollUntil([this] { return clipboard() == "clipboard before\n"; }, patience));
    openQtWindow();
    dictate(u"thank you very much"_s);
    EXPECT_TRUE(windowShows(u"Thank you very much."_s));
}

TEST_F(FaultRun, anotherLanguageIsRefusedInWords)
{
    environment.insert(u"LC_ALL"_s, u"fi_FI.UTF-8"_s);
    environment.insert(u"LANG"_s, u"fi_FI.UTF-8"_s);
    startTalmo();
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: The current language isn't supported for on-device transcription."_s));
    keyboard.release(key);
}

TEST_F(FaultRun, aLanguageThatNeedsTheNeuralRecogniserIsRefusedInWordsWhereItIsMissing)
{
    environment.insert(u"LC_ALL"_s, u"fr_FR.UTF-8"_s);
    environment.insert(u"LANG"_s, u"fr_FR.UTF-8"_s);
    startTalmo();
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: The neural recogniser's library is not installed; it was looked for in "_s));
    keyboard.release(key);
}

TEST_F(FaultRun, withoutADisplaySaysSoAndEnds)
{
    environment.insert(u"DISPLAY"_s, u":4711"_s);
    rig::ChildProcess blind(QStringLiteral(TALMO_BIN "/talmo"), {}, environment);
    EXPECT_TRUE(blind.waitForLine(u"talmo: No X display could be opened. Is DISPLAY set?"_s, patience));
    EXPECT_TRUE(rig::waitUntil([&blind] { return !blind.isRunning(); }, patience));
    EXPECT_EQ(blind.terminate(), 1);
}

TEST_F(FaultRun, canBeQuitWhenIdle)
{
    startTalmo();
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(FaultRun, canBeQuitWhileItRecords)
{
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    const auto player = sound->startPlaying(rig::speak(u"hello world"_s, desktop.folder()));
    EXPECT_EQ(quitTalmo(), 0);
    keyboard.release(key);
}

TEST_F(FaultRun, canBeQuitWhileItProcesses)
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: processing"_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(FaultRun, canBeQuitWhileItInserts)
{
    openQtWindow(u"300"_s);
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: inserting"_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(FaultRun, canBeQuitInAnError)
{
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    keyboard.release(key);
    ASSERT_TRUE(talmoSays(u"state: error"_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(FaultRun, anXServerThatGoesAwayEndsIt)
{
    startTalmo();
    desktop.killServer();
    EXPECT_TRUE(rig::waitUntil([this] { return !talmo->isRunning(); }, patience));
}

TEST_F(TalmoRun, withoutASessionBusOrAnyWordOfOneTalmoDictates)
{
    environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_EQ(quitTalmo(), 0);
}

} // namespace talmo::test
