// Against a stand-in for the portal: no desktop that the tests can start has this one.

#include "Platform/Linux/Wayland/Portal/PortalKeys.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Platform/Linux/Wayland/Portal/PortalFixture.h"
#include "Platform/Linux/Wayland/Portal/PortalKeysStatus.h"
#include "Support/ManualClock.h"
#include "Waiting.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using State = PortalKeys::State;

class PortalKeysTest : public PortalFixture {
protected:
    ~PortalKeysTest() override
    {
        status.reset();
        monitor.reset();
        keys.reset();
    }
    void open(const MockPortal::Behaviour &behaviour = {})
    {
        portal.emplace(behaviour);
        keys = std::make_shared<PortalKeys>(PortalKeys::Options{XKB_KEY_Pause, [] { return false; }, clock}, bus);
        status = std::make_unique<PortalKeysStatus>(keys);
        monitor = keys->addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const FlagsChangedEvent &event) {
            events.push_back(event.modifierFlags != 0);
        });
    }
    void openBound(const MockPortal::Behaviour &behaviour = {})
    {
        open(behaviour);
        ASSERT_TRUE(waitFor([this] { return keys->state() == State::Bound; }));
    }
    bool waitForCall(const QString &call)
    {
        return testbed::pollUntil([&] { return portal->calls().contains(call); }, 10s);
    }
    bool waitForEvents(std::size_t count)
    {
        return waitFor([this, count] { return events.size() >= count; });
    }
    /// A repeat is not reported; the watch on it begins anew.
    void repeat()
    {
        const auto sleeps = clock->requestedSleeps().size();
        portal->press();
        ASSERT_TRUE(waitFor([&] { return clock->requestedSleeps().size() > sleeps; }));
    }

    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<PortalKeys> keys;
    std::unique_ptr<PortalKeysStatus> status;
    std::shared_ptr<EventMonitorToken> monitor;
    std::vector<bool> events;
};

} // namespace

TEST_F(PortalKeysTest, isNotOfferedWithoutPortalOrShortcuts)
{
    EXPECT_FALSE(PortalKeys::isOffered(bus));
    MockPortal::Behaviour behaviour;
    behaviour.shortcutsVersion = 0;
    portal.emplace(behaviour);
    EXPECT_FALSE(PortalKeys::isOffered(bus));
    portal->change({});
    EXPECT_TRUE(PortalKeys::isOffered(bus));
}

TEST_F(PortalKeysTest, bindsProposedKeyAndReportsHold)
{
    openBound();
    EXPECT_THAT(portal->calls(), ElementsAre(u"bind dictate Pause"_s));
    EXPECT_EQ(keys->trigger(), u"Pause key"_s);
    portal->press(u"another shortcut"_s);
    portal->press();
    ASSERT_TRUE(waitForEvents(1));
    portal->release();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(true, false));
    keys.reset();
    status.reset();
    EXPECT_TRUE(waitForCall(u"close"_s));
}

TEST_F(PortalKeysTest, repeatsAreNoPresses)
{
    openBound();
    portal->press();
    ASSERT_TRUE(waitForEvents(1));
    clock->advance(500ms);
    for (int count = 0; count < 3; ++count) {
        repeat();
        clock->advance(30ms);
    }
    portal->release();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(true, false));
    EXPECT_EQ(clock->sleeperCount(), 0U);
}

TEST_F(PortalKeysTest, endOfRepeatsEndsHoldWithoutRelease)
{
    openBound();
    portal->press();
    ASSERT_TRUE(waitForEvents(1));
    clock->advance(500ms);
    repeat();
    clock->advance(PortalKeys::longestGap - 1ms);
    EXPECT_THAT(events, ElementsAre(true));
    repeat();
    clock->advance(PortalKeys::longestGap);
    ASSERT_TRUE(waitForEvents(2));
    portal->release(); // Late.
    portal->press();
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre(true, false, true));
}

TEST_F(PortalKeysTest, holdWithoutRepeatsLastsUntilRelease)
{
    openBound();
    portal->press();
    ASSERT_TRUE(waitForEvents(1));
    clock->advance(60s);
    EXPECT_THAT(events, ElementsAre(true));
    portal->release();
    ASSERT_TRUE(waitForEvents(2));
}

TEST_F(PortalKeysTest, pressAfterLostReleaseEndsEarlierHold)
{
    openBound();
    portal->press();
    ASSERT_TRUE(waitForEvents(1));
    clock->advance(PortalKeys::lostRelease + 1ms);
    portal->press();
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre(true, false, true));
}

TEST_F(PortalKeysTest, refusalIsSaidAndCanBeAskedAgain)
{
    MockPortal::Behaviour behaviour;
    behaviour.response = 1;
    open(behaviour);
    ASSERT_TRUE(waitFor([this] { return keys->state() == State::Refused; }));
    EXPECT_TRUE(status->status().isMissing);
    EXPECT_TRUE(status->status().canBeEnabled);
    EXPECT_TRUE(status->status().sentence.contains(u"talmoctl toggle"_s));
    portal->change({});
    status->enable();
    ASSERT_TRUE(waitFor([this] { return keys->state() == State::Bound; }));
    EXPECT_FALSE(status->status().isMissing);
    EXPECT_TRUE(status->status().sentence.contains(u"Pause key"_s));
}

TEST_F(PortalKeysTest, successThatIsCalledFailureCounts)
{
    MockPortal::Behaviour behaviour;
    behaviour.response = 2; // As GNOME 48 does.
    openBound(behaviour);
    EXPECT_THAT(portal->calls(), ElementsAre(u"bind dictate Pause"_s, u"list"_s));
}

TEST_F(PortalKeysTest, shortcutThatIsNotListedIsRefusal)
{
    MockPortal::Behaviour behaviour;
    behaviour.showsShortcut = false;
    open(behaviour);
    ASSERT_TRUE(waitFor([this] { return keys->state() == State::Refused; }));
    EXPECT_TRUE(waitForCall(u"close"_s));
}

TEST_F(PortalKeysTest, restartedPortalIsAskedAgainAndEndsHold)
{
    openBound();
    portal->press();
    ASSERT_TRUE(waitForEvents(1));
    portal.reset();
    ASSERT_TRUE(waitForEvents(2));
    portal.emplace(MockPortal::Behaviour());
    ASSERT_TRUE(waitForCall(u"bind dictate Pause"_s));
    ASSERT_TRUE(waitFor([this] { return keys->state() == State::Bound; }));
    portal->press();
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre(true, false, true));
}

TEST(PortalKeys, proposesFirstKeyThatIsNoModifier)
{
    EXPECT_EQ(PortalKeys::usableKey({XKB_KEY_Control_R, XKB_KEY_F9}), quint32(XKB_KEY_F9));
    EXPECT_EQ(PortalKeys::usableKey({XKB_KEY_Control_R, XKB_KEY_XF86WakeUp, XKB_KEY_F13}), quint32(XKB_KEY_Pause));
}

} // namespace talmo::test
