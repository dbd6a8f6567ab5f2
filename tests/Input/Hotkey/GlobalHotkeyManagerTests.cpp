#include "Input/Hotkey/GlobalHotkeyManager.h"

#include "Support/FakeEventMonitor.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr quint64 shiftFlag = quint64(1) << 17;

class GlobalHotkeyManagerTest : public testing::Test {
protected:
    GlobalHotkeyManagerTest() { connect(); }

    void connect()
    {
        manager->setOnHotkeyDown([this] { signalled.push_back("down"); });
        manager->setOnHotkeyUp([this] { signalled.push_back("up"); });
    }

    RecordingLog log;
    std::vector<std::string> signalled;
    std::shared_ptr<FakeEventMonitor> monitor = std::make_shared<FakeEventMonitor>();
    std::shared_ptr<FakeInputTrust> trust = std::make_shared<FakeInputTrust>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::unique_ptr<GlobalHotkeyManager> manager =
        std::make_unique<GlobalHotkeyManager>(monitor, trust, clock, SerialExecutor::onCurrentThread());
};

} // namespace

TEST_F(GlobalHotkeyManagerTest, hasExpectedConstants)
{
    EXPECT_EQ(GlobalHotkeyManager::flagsChangedMask, 4096U);
    EXPECT_EQ(GlobalHotkeyManager::functionFlag, 0x800000U);
}

TEST_F(GlobalHotkeyManagerTest, startInstallsBothMonitorsAndLogsOnce)
{
    manager->start();
    manager->start();
    EXPECT_THAT(monitor->masks, ElementsAre(4096U, 4096U));
    EXPECT_THAT(log.lines(), ElementsAre(u"hotkey debug: start(): globalMonitor=true localMonitor=true "
                                         u"accessibilityTrusted=true"_s));
    EXPECT_EQ(log.formats().front(),
              u"start(): globalMonitor=%{bool}d localMonitor=%{bool}d accessibilityTrusted=%{bool}d"_s);
}

TEST_F(GlobalHotkeyManagerTest, missingMonitorIsOnlyLogged)
{
    monitor->offersGlobal = false;
    trust->trusted = false;
    manager->start();
    EXPECT_THAT(log.lines(), ElementsAre(u"hotkey debug: start(): globalMonitor=false localMonitor=true "
                                         u"accessibilityTrusted=false"_s));
    EXPECT_EQ(trust->requests, 0);
}

TEST_F(GlobalHotkeyManagerTest, logsEachFlagsChangeWithPreviousState)
{
    manager->start();
    monitor->send(GlobalHotkeyManager::functionFlag | shiftFlag);
    monitor->send(shiftFlag);
    const auto lines = log.lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[1], u"hotkey debug: flagsChanged raw=8519680 function=true isFnDown=false"_s);
    EXPECT_EQ(lines[2], u"hotkey debug: flagsChanged raw=131072 function=false isFnDown=true"_s);
    EXPECT_EQ(log.formats()[1], u"flagsChanged raw=%lu function=%{bool}d isFnDown=%{bool}d"_s);
}

TEST_F(GlobalHotkeyManagerTest, holding150msSignalsDownOnceAndUpOnRelease)
{
    manager->start();
    monitor->press();
    clock->advance(150ms - 1ns);
    EXPECT_THAT(signalled, IsEmpty());
    clock->advance(1ns);
    EXPECT_THAT(signalled, ElementsAre("down"));
    clock->advance(10s);
    EXPECT_THAT(signalled, ElementsAre("down"));
    monitor->release();
    EXPECT_THAT(signalled, ElementsAre("down", "up"));
    EXPECT_THAT(clock->requestedSleeps(), ElementsAre(150ms));
}

TEST_F(GlobalHotkeyManagerTest, releasingAfter149msSignalsNothing)
{
    manager->start();
    monitor->press();
    clock->advance(150ms - 1ns);
    monitor->release();
    EXPECT_EQ(clock->sleeperCount(), 0U);
    clock->advance(10s);
    EXPECT_THAT(signalled, IsEmpty());
}

TEST_F(GlobalHotkeyManagerTest, otherModifierWhileFnIsDownChangesNothing)
{
    manager->start();
    monitor->press();
    clock->advance(100ms);
    monitor->send(GlobalHotkeyManager::functionFlag | shiftFlag);
    monitor->send(GlobalHotkeyManager::functionFlag);
    clock->advance(50ms);
    EXPECT_THAT(signalled, ElementsAre("down"));
    EXPECT_EQ(clock->requestedSleeps().size(), 1U);
}

TEST_F(GlobalHotkeyManagerTest, otherModifierWhileFnIsUpChangesNothing)
{
    manager->start();
    monitor->send(shiftFlag);
    monitor->send(0);
    EXPECT_EQ(manager->recognizer().lastReleaseTime(), std::nullopt);
    EXPECT_THAT(signalled, IsEmpty());
}

namespace {

/// Time and timers are under the test's control. Cancelling has no effect, as for a timer that is already due.
class StoppedClock final : public Clock {
public:
    Instant time{1h};
    std::shared_ptr<Completion<void>> timer = Completion<void>::make();
    Instant now() const override { return time; }
    QFuture<void> sleep(Duration, std::stop_token) override { return timer->future(); }
};

} // namespace

TEST_F(GlobalHotkeyManagerTest, timerFiringAfterReleaseSignalsNothing)
{
    const auto stopped = std::make_shared<StoppedClock>();
    manager = std::make_unique<GlobalHotkeyManager>(monitor, trust, stopped, SerialExecutor::onCurrentThread());
    connect();
    manager->start();
    monitor->press();
    settle();
    monitor->release();
    // A new press, as undecided as the one the timer was started for.
    stopped->time += 400ms;
    monitor->press();
    std::exchange(stopped->timer, Completion<void>::make())->finish();
    settle();
    EXPECT_THAT(signalled, IsEmpty());
    stopped->timer->finish();
    settle();
    EXPECT_THAT(signalled, ElementsAre("down"));
}

TEST_F(GlobalHotkeyManagerTest, pressMoreThan300msAfterReleaseIsNew)
{
    manager->start();
    monitor->press();
    monitor->release();
    clock->advance(300ms + 1ns);
    monitor->press();
    EXPECT_THAT(signalled, IsEmpty());
    clock->advance(150ms);
    EXPECT_THAT(signalled, ElementsAre("down"));
    monitor->release();
    EXPECT_THAT(signalled, ElementsAre("down", "up"));
}

TEST_F(GlobalHotkeyManagerTest, globalMonitorWorksWithoutLocalMonitor)
{
    monitor->offersLocal = false;
    manager->start();
    EXPECT_TRUE(log.lines().front().contains(u"globalMonitor=true localMonitor=false"_s));
    monitor->press();
    clock->advance(150ms);
    EXPECT_THAT(signalled, ElementsAre("down"));
}

TEST_F(GlobalHotkeyManagerTest, doubleTapStartsOnSecondPressAndStopsOnThird)
{
    manager->start();
    monitor->press();
    clock->advance(50ms);
    monitor->release();
    clock->advance(300ms);
    monitor->press();
    EXPECT_THAT(signalled, ElementsAre("down"));
    monitor->release();
    clock->advance(5s);
    monitor->press();
    EXPECT_THAT(signalled, ElementsAre("down", "up"));
    clock->advance(5s);
    monitor->release();
    EXPECT_THAT(signalled, ElementsAre("down", "up"));
}

TEST_F(GlobalHotkeyManagerTest, gesturesAdvanceWithBothCallbacksUnset)
{
    manager->setOnHotkeyDown({});
    manager->setOnHotkeyUp({});
    manager->start();
    monitor->press();
    clock->advance(150ms);
    EXPECT_EQ(manager->recognizer().activeMode(), ActiveMode::Hold);
    monitor->release();
    EXPECT_EQ(manager->recognizer().activeMode(), std::nullopt);
}

TEST_F(GlobalHotkeyManagerTest, localMonitorReturnsEventUnchanged)
{
    manager->start();
    monitor->isApplicationActive = true;
    monitor->press();
    clock->advance(150ms);
    EXPECT_THAT(signalled, ElementsAre("down"));
    EXPECT_THAT(monitor->delivered, ElementsAre(FlagsChangedEvent{GlobalHotkeyManager::functionFlag}));
}

TEST_F(GlobalHotkeyManagerTest, eventsAfterDestructionDoNothing)
{
    manager->start();
    monitor->press();
    settle();
    manager.reset();
    clock->advance(1s);
    monitor->release();
    EXPECT_THAT(signalled, IsEmpty());
}

} // namespace talmo::test
