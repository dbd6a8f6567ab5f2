#include "Faults/FaultFixture.h"

#include "DesktopParts.h"
#include "Insertion/RestorePolicy.h"
#include "Support/NotifierHost.h"
#include "Support/RawSelectionOwner.h"

#include <QDateTime>
#include <QSaveFile>

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

namespace {

/// Talmo stands still, as on a machine that sleeps.
class SleepFault : public FaultTest {
protected:
    void sleepFor(testbed::Timeout time)
    {
        signalTalmo(SIGSTOP);
        testbed::sleepFor(time);
        signalTalmo(SIGCONT);
    }
};

} // namespace

static const FaultRegistration sleepRecordingRow("Process", "The machine sleeps while somebody speaks",
                                                 "What was heard until then, and after, is inserted");
TEST_F(SleepFault, whileRecording)
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    sleepFor(std::chrono::seconds(5));
    keyboard.release(key);
    EXPECT_TRUE(windowShows(nextMeant()));
    nextDictationWorks();
}

static const FaultRegistration sleepKeyUpRow("Process", "The key is let go while the machine sleeps",
                                             "The sentence is inserted afterwards");
TEST_F(SleepFault, whileKeyIsReleased)
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    signalTalmo(SIGSTOP);
    keyboard.release(key);
    testbed::sleepFor(std::chrono::seconds(3));
    signalTalmo(SIGCONT);
    EXPECT_TRUE(windowShows(nextMeant()));
    nextDictationWorks();
}

static const FaultRegistration sleepProcessingRow("Process", "The machine sleeps while Talmo recognises",
                                                  "The sentence is inserted afterwards");
TEST_F(SleepFault, whileProcessing)
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: processing"_s));
    sleepFor(std::chrono::seconds(3));
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    nextDictationWorks();
}

static const FaultRegistration sleepPastingRow("Process", "The machine sleeps before the window has read the text",
                                               "The sentence is inserted, and the clipboard comes back");
TEST_F(SleepFault, whilePasteIsPending)
{
    openQtWindow(u"300"_s); // Reads it after that many milliseconds.
    copy(u"clipboard before"_s);
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: inserting"_s));
    sleepFor(RestorePolicy::readTime + std::chrono::seconds(1));
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
    nextDictationWorks();
}

namespace {

/// The wall clock that Talmo and its libraries see can be set at any time; the monotonic clocks go on, as they do when
/// somebody sets a real clock.
class ClockFault : public FaultTest {
protected:
    ClockFault()
    {
        environment.insert(u"LD_PRELOAD"_s, QStringLiteral(TALMO_FAKETIME));
        environment.insert(u"FAKETIME_TIMESTAMP_FILE"_s, clockFile());
        environment.insert(u"FAKETIME_NO_CACHE"_s, u"1"_s);
        environment.insert(u"FAKETIME_DONT_FAKE_MONOTONIC"_s, u"1"_s);
        setClock(std::chrono::seconds(0));
    }
    /// Between the taps of a double-tap, while somebody speaks, while the text is recognised and while it is inserted.
    void setClockInEveryState(std::chrono::seconds step)
    {
        const testbed::Timeout pause = std::chrono::milliseconds(40);
        keyboard.press(key);
        testbed::sleepFor(pause);
        keyboard.release(key);
        setClock(step);
        testbed::sleepFor(pause);
        keyboard.press(key);
        testbed::sleepFor(pause);
        keyboard.release(key);
        ASSERT_TRUE(talmoSays(u"state: recording"_s));
        setClock(step * 2);
        speak(u"hello world"_s);
        keyboard.press(key);
        keyboard.release(key);
        ASSERT_TRUE(talmoSays(u"state: processing"_s));
        setClock(step * 3);
        ASSERT_TRUE(talmoSays(u"state: inserting"_s));
        setClock(step * 4);
    }
    void dictationSurvives(std::chrono::seconds step)
    {
        openQtWindow(u"300"_s);
        copy(u"clipboard before"_s);
        startTalmo();
        setClockInEveryState(step);
        EXPECT_TRUE(windowShows(nextMeant()));
        EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
        EXPECT_NEAR(static_cast<double>(errorOfClock()), static_cast<double>((step * 4).count()), 60);
        nextDictationWorks();
    }

private:
    QString clockFile() const { return desktop.folder() + u"/clock"_s; }
    void setClock(std::chrono::seconds time)
    {
        QSaveFile file(clockFile());
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write((time.count() < 0 ? "" : "+") + QByteArray::number(qlonglong(time.count())) + "s\n");
        ASSERT_TRUE(file.commit());
    }
    /// By how many seconds a program in Talmo's environment sees another time than this one.
    qint64 errorOfClock()
    {
        QProcess date;
        date.setProcessEnvironment(environment);
        date.start(u"date"_s, {u"+%s"_s});
        EXPECT_TRUE(date.waitForFinished());
        return date.readAll().trimmed().toLongLong() - QDateTime::currentSecsSinceEpoch();
    }
};

} // namespace

static const FaultRegistration clockBackRow("Process", "The clock is set back by days during a dictation", "Nothing");
TEST_F(ClockFault, setBack)
{
    dictationSurvives(-std::chrono::hours(24));
}

static const FaultRegistration clockForwardRow("Process", "The clock is set forward by days during a dictation",
                                               "Nothing");
TEST_F(ClockFault, setForward)
{
    dictationSurvives(std::chrono::hours(24));
}

FAULT(Process, quitWhenIdle, "Talmo is asked to end when idle", "It ends")
{
    startTalmo();
    EXPECT_EQ(quitTalmo(), 0);
    startTalmo();
    nextDictationWorks();
}

FAULT(Process, quitWhileItRecords, "Talmo is asked to end while somebody speaks",
      "What was heard until then is inserted first")
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(nextMeant()));
    keyboard.release(key);
    startTalmo();
    nextDictationWorks();
}

FAULT(Process, quitWhileItProcesses, "Talmo is asked to end while it recognises", "The sentence is inserted first")
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: processing"_s));
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(nextMeant()));
    startTalmo();
    nextDictationWorks();
}

FAULT(Process, quitWhileItInserts, "Talmo is asked to end while it inserts",
      "The sentence is inserted first, and the clipboard manager, if there is one, gets the earlier clipboard")
{
    openQtWindow(u"300"_s);
    copy(u"clipboard before"_s);
    const RawSelectionOwner manager("CLIPBOARD_MANAGER", {{"SAVE_TARGETS", {"", "NULL"}}});
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: inserting"_s));
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(manager.requestedTargets() == std::vector<QByteArray>{"SAVE_TARGETS"});
    startTalmo();
    nextDictationWorks();
}

FAULT(Process, quitInAnError, "Talmo is asked to end in an error", "It ends")
{
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    keyboard.release(key);
    ASSERT_TRUE(talmoSays(u"state: error"_s));
    EXPECT_EQ(quitTalmo(), 0);
    startTalmo();
    nextDictationWorks();
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

FAULT(Process, notifierHostRestarted, "The panel that shows the icon is restarted",
      "The icon comes back; dictating works")
{
    const auto bus = testbed::startBus(environment);
    openQtWindow();
    startTalmo();
    ASSERT_TRUE(talmo->waitForLine(u"there is no tray for the icon yet"_s, timeout));
    for (int starts = 0; starts < 2; ++starts) {
        const NotifierHost host;
        EXPECT_TRUE(testbed::waitUntil([&host] { return host.registrations() > 0; }, timeout));
    }
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
