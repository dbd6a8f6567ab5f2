// The next dictation, quitting and logging out while a sentence is still being processed: it must still arrive.

#include "EndToEnd/TalmoFixture.h"

#include "SpokenText.h"
#include "Support/Printing.h"
#include "Support/TestModelServer.h"

#include <csignal>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

/// The model server accepts the request and never answers.
class InterruptionEndToEndTest : public TalmoFixture {
protected:
    void beEditing()
    {
        server.answerWith({{u"fault"_s, u"hang"_s}});
        desktop.storeSettings({{u"linux.languageModelAddress"_s, server.address()}});
        openQtWindow();
        startTalmo();
        ASSERT_TRUE(talmo->waitForLine(u"language model: test-model"_s, timeout));
        dictate(u"hello world"_s);
        ASSERT_TRUE(server.waitForChats(1));
        testbed::sleepFor(350ms); // Longer than the double-tap window.
    }
    int count(const QString &text) const
    {
        int found = 0;
        for (const auto &line : talmo->lines()) {
            found += line.text.contains(text) ? 1 : 0;
        }
        return found;
    }
    TestModelServer server;
};

} // namespace

TEST_F(InterruptionEndToEndTest, pressDuringEditInsertsSentenceAndRecordsNext)
{
    beEditing();
    keyboard.press(key);
    speak(u"thank you very much"_s); // Immediately, before recording has started.
    EXPECT_EQ(server.chats().size(), 1U);
    server.answerWith({{u"answer"_s, u"Edited thanks."_s}});
    keyboard.release(key);
    EXPECT_TRUE(windowShows(u"Hello world. Edited thanks."_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(InterruptionEndToEndTest, doubleTapDuringEditRecordsNextHandsFree)
{
    beEditing();
    doubleTap();
    speak(u"thank you very much"_s);
    server.answerWith({{u"answer"_s, u"Edited thanks."_s}});
    keyboard.press(key);
    keyboard.release(key);
    EXPECT_TRUE(windowShows(u"Hello world. Edited thanks."_s));
}

TEST_F(InterruptionEndToEndTest, quittingWhileModelEditsInsertsSentence)
{
    beEditing();
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

TEST_F(InterruptionEndToEndTest, quittingWhileRecordingInsertsSentence)
{
    openQtWindow();
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    keyboard.release(key);
}

TEST_F(InterruptionEndToEndTest, sessionEndWaitsUntilSentenceIsInserted)
{
    testbed::ChildProcess manager(QStringLiteral(TALMO_BIN "/talmo-session-manager"), {}, environment);
    const auto address = manager.waitForLine(u"address "_s, timeout);
    ASSERT_TRUE(address);
    environment.insert(u"SESSION_MANAGER"_s, address->text.mid(8));
    beEditing();
    ASSERT_TRUE(manager.waitForLine(u"registered"_s, timeout));
    manager.writeLine(u"logout"_s);
    const auto saved = manager.waitForLine(u"saved"_s, timeout);
    ASSERT_TRUE(saved);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    const auto idle = talmo->waitForLine(u"state: idle"_s, timeout);
    ASSERT_TRUE(idle);
    EXPECT_LE(idle->time,
              saved->time +
                  2s); // Well below the model's ten-second timeout. The two pipes may be read in either order.
    manager.writeLine(u"die"_s);
    EXPECT_TRUE(testbed::waitUntil([this] { return !talmo->isRunning(); }, timeout));
}

TEST_F(InterruptionEndToEndTest, secondQuitRequestNeitherHangsNorLosesSentence)
{
    beEditing();
    ::kill(static_cast<pid_t>(talmo->processId()), SIGTERM);
    ::kill(static_cast<pid_t>(talmo->processId()), SIGHUP);
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

/// The kernel ends it: the shutdown waits for answers of the X server.
TEST_F(InterruptionEndToEndTest, hangingShutdownIsEnded)
{
    startTalmo();
    desktop.signalServer(SIGSTOP);
    ::kill(static_cast<pid_t>(talmo->processId()), SIGTERM);
    const bool hasEnded = testbed::waitUntil([this] { return !talmo->isRunning(); }, 30s);
    desktop.signalServer(SIGCONT);
    EXPECT_TRUE(hasEnded);
    EXPECT_EQ(quitTalmo(), -1);
}

TEST_F(InterruptionEndToEndTest, holdReleasedBeforeRecordingStartsClosesMicrophone)
{
    openQtWindow();
    startTalmo();
    sound->freeze(); // The microphone opens slowly.
    keyboard.press(key);
    testbed::sleepFor(250ms);
    keyboard.release(key);
    sound->thaw();
    ASSERT_TRUE(talmo->waitForLine(u"state: processing"_s, timeout));
    EXPECT_LE(count(u"state: recording"_s), 1);
    EXPECT_TRUE(talmo->waitForLine(u"error: No speech detected."_s, timeout));
}

} // namespace talmo::test
