#include "Faults/FaultFixture.h"

#include "DesktopParts.h"

#include <csignal>

namespace talmo::test {

FAULT(Process, stoppedAndContinued, "The machine sleeps for a while between two dictations", "Nothing")
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    signalTalmo(SIGSTOP);
    testbed::sleepFor(std::chrono::seconds(2));
    signalTalmo(SIGCONT);
    nextDictationWorks();
}

FAULT(Process, quitWhenIdle, "Talmo is asked to end when idle", "It ends")
{
    startTalmo();
    EXPECT_EQ(quitTalmo(), 0);
}

FAULT(Process, quitWhileItProcesses, "Talmo is asked to end while it recognises", "The sentence is inserted first")
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: processing"_s));
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(nextMeant()));
}

FAULT(Process, quitWhileItInserts, "Talmo is asked to end while it inserts",
      "The sentence is inserted and the clipboard comes back first")
{
    openQtWindow(u"300"_s);
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: inserting"_s));
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(nextMeant()));
}

FAULT(Process, quitInAnError, "Talmo is asked to end in an error", "It ends")
{
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    keyboard.release(key);
    ASSERT_TRUE(talmoSays(u"state: error"_s));
    EXPECT_EQ(quitTalmo(), 0);
}

namespace {

class KillFault : public FaultTest {
protected:
    void killAndStartAgain()
    {
        talmo->kill();
        keyboard.release(key);
        startTalmo();
        nextDictationWorks();
    }
};

} // namespace

static const FaultRegistration killedRecordingRow("Process", "Talmo is killed while it records",
                                                  "The sentence is lost; Talmo starts again and works");
TEST_F(KillFault, whileRecording)
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    killAndStartAgain();
}

static const FaultRegistration killedProcessingRow("Process", "Talmo is killed while it recognises", "As above");
TEST_F(KillFault, whileProcessing)
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    keyboard.release(key);
    ASSERT_TRUE(talmoSays(u"state: processing"_s));
    killAndStartAgain();
}

static const FaultRegistration killedInsertingRow("Process", "Talmo is killed while it inserts",
                                                  "The clipboard is lost; Talmo starts again and works");
TEST_F(KillFault, whileInserting)
{
    openQtWindow(u"300"_s);
    startTalmo();
    holdAndSpeak();
    keyboard.release(key);
    ASSERT_TRUE(talmoSays(u"state: inserting"_s));
    killAndStartAgain();
}

FAULT(Process, secondStart, "Talmo is started twice", "The second start opens the settings of the first")
{
    startTalmo();
    testbed::ChildProcess second(QStringLiteral(TALMO_BIN "/talmo"), {}, environment);
    EXPECT_TRUE(testbed::waitUntil([&second] { return !second.isRunning(); }, timeout));
    EXPECT_EQ(second.terminate(), 0);
    nextDictationWorks();
}

FAULT(Process, sessionBusEnds, "The session bus ends", "The icon goes; dictating works")
{
    auto bus = testbed::startBus(environment);
    openQtWindow();
    startTalmo();
    // Until it has looked for a tray, Qt itself waits for the bus, and goes on waiting when that ends.
    ASSERT_TRUE(talmoSays(u"there is no tray"_s));
    bus->kill();
    nextDictationWorks();
}

FAULT(Process, trayRestarted, "The tray is restarted", "The icon comes back; dictating works")
{
    auto tray = testbed::startTray(environment);
    openQtWindow();
    startTalmo();
    tray->kill();
    tray = testbed::startTray(environment);
    nextDictationWorks();
}

FAULT(Process, noSessionBus, "There is no session bus", "Nothing but no notifications")
{
    environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    startTalmo();
    nextDictationWorks();
    EXPECT_EQ(quitTalmo(), 0);
}

} // namespace talmo::test
