#include "Platform/Linux/Evdev/EvdevHotkeyControl.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Platform/Linux/Evdev/ActiveTerminal.h"
#include "Platform/Linux/Evdev/MockKeyboards.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

#include <QTemporaryFile>

#include <optional>
#include <vector>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr quint64 fn = GlobalHotkeyManager::functionFlag;

class EvdevEventMonitorTest : public testing::Test {
protected:
    void SetUp() override { keyboards.plugIn(0); }
    /// With those that are plugged in by now.
    void start(const QStringList &keys = {})
    {
        auto opened = EvdevKeyboards::open();
        ASSERT_NE(opened, nullptr);
        monitor =
            std::make_shared<EvdevEventMonitor>(std::move(opened), triggerKeySymbols(keys),
                                                EvdevEventMonitor::Questions{[this] { return isApplicationActive; },
                                                                             [this] {
                                                                                 askedForSession += 1;
                                                                                 return isSessionActive;
                                                                             }});
        global = monitor->addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask,
                                           [this](const auto &event) { events.push_back(event.modifierFlags); });
        local = monitor->addLocalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const auto &event) {
            localEvents.push_back(event.modifierFlags);
            return event;
        });
    }
    bool waitForEvents(std::size_t count)
    {
        return waitFor([this, count] { return events.size() >= count; });
    }
    /// Everything before it has been read once this has come.
    void waitForTap(int keyboard = 0)
    {
        const auto before = events.size();
        keyboards.press(keyboard, KEY_RIGHTCTRL);
        keyboards.release(keyboard, KEY_RIGHTCTRL);
        ASSERT_TRUE(waitForEvents(before + 2));
        events.resize(before);
    }

    MockKeyboards keyboards;
    bool isApplicationActive = false;
    bool isSessionActive = true;
    int askedForSession = 0;
    std::shared_ptr<EvdevEventMonitor> monitor;
    std::vector<quint64> events;
    std::vector<quint64> localEvents;
    std::shared_ptr<EventMonitorToken> global;
    std::shared_ptr<EventMonitorToken> local;
};

} // namespace

TEST_F(EvdevEventMonitorTest, onlyRightCtrlOfBothCounts)
{
    start();
    keyboards.press(0, KEY_LEFTCTRL);
    keyboards.release(0, KEY_LEFTCTRL);
    keyboards.press(0, KEY_RIGHTCTRL);
    keyboards.repeat(0, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitForEvents(1));
    keyboards.release(0, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(EvdevEventMonitorTest, keyHeldOnTwoKeyboardsIsReleasedWithTheLast)
{
    keyboards.plugIn(1);
    const auto both = EvdevKeyboards::open();
    ASSERT_NE(both, nullptr);
    std::vector<std::pair<int, bool>> keys;
    both->setOnKey([&keys](int code, bool isDown) { keys.emplace_back(code, isDown); });
    // Each letter comes from the same keyboard as what precedes it, and so after it.
    keyboards.press(0, KEY_RIGHTCTRL);
    keyboards.press(0, KEY_A);
    ASSERT_TRUE(waitFor([&keys] { return keys.size() == 2; }));
    keyboards.press(1, KEY_RIGHTCTRL);
    keyboards.press(1, KEY_B);
    ASSERT_TRUE(waitFor([&keys] { return keys.size() == 3; }));
    keyboards.release(0, KEY_RIGHTCTRL);
    keyboards.press(0, KEY_C);
    ASSERT_TRUE(waitFor([&keys] { return keys.size() == 4; }));
    keyboards.release(1, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitFor([&keys] { return keys.size() == 5; }));
    EXPECT_THAT(keys, ElementsAre(std::pair(KEY_RIGHTCTRL, true), std::pair(KEY_A, true), std::pair(KEY_B, true),
                                  std::pair(KEY_C, true), std::pair(KEY_RIGHTCTRL, false)));
}

TEST_F(EvdevEventMonitorTest, unplugReleasesHeldKey)
{
    keyboards.plugIn(1);
    start();
    keyboards.press(1, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitForEvents(1));
    keyboards.unplug(1);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(fn, 0U));
    waitForTap(0);
}

TEST_F(EvdevEventMonitorTest, keyboardPluggedInLaterIsHeard)
{
    start();
    keyboards.plugIn(1);
    keyboards.press(1, KEY_RIGHTCTRL); // Waits in the device until it is opened.
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(events.front(), fn);
}

TEST_F(EvdevEventMonitorTest, releaseAmongDroppedEventsIsReported)
{
    start();
    keyboards.press(0, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitForEvents(1));
    keyboards.dropRelease(0, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(fn, 0U));
    waitForTap();
}

TEST_F(EvdevEventMonitorTest, useAsModifierIsWithdrawn)
{
    start();
    keyboards.press(0, KEY_RIGHTCTRL);
    keyboards.press(0, KEY_C);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(EvdevEventMonitorTest, pressSoonAfterUseAsModifierComesLate)
{
    start();
    keyboards.press(0, KEY_RIGHTCTRL);
    keyboards.press(0, KEY_C);
    keyboards.release(0, KEY_C);
    keyboards.release(0, KEY_RIGHTCTRL);
    keyboards.press(0, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre(fn, 0U, fn));
}

TEST_F(EvdevEventMonitorTest, pressInAnotherSessionDoesNotCount)
{
    start();
    isSessionActive = false;
    keyboards.press(0, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitFor([this] { return askedForSession == 1; }));
    keyboards.release(0, KEY_RIGHTCTRL);
    isSessionActive = true;
    waitForTap();
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(EvdevEventMonitorTest, ownWindowReachesLocalMonitorOnly)
{
    start();
    isApplicationActive = true;
    keyboards.press(0, KEY_RIGHTCTRL);
    ASSERT_TRUE(waitFor([this] { return !localEvents.empty(); }));
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(EvdevEventMonitorTest, keyCapturedForSettingsDoesNotCount)
{
    start();
    EvdevHotkeyControl control(monitor, {});
    std::vector<QString> captured;
    control.beginCapture([&captured](const HotkeyControl::Press &press) { captured.push_back(press.key.name); });
    keyboards.press(0, KEY_F9);
    ASSERT_TRUE(waitFor([&captured] { return !captured.empty(); }));
    EXPECT_THAT(captured, ElementsAre(u"F9"_s));
    control.setKeys({u"F9"_s});
    EXPECT_THAT(events, IsEmpty());
    keyboards.release(0, KEY_F9);
    keyboards.press(0, KEY_F9);
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre(fn));
}

TEST_F(EvdevEventMonitorTest, typingKeyCannotBeChosen)
{
    start();
    EvdevHotkeyControl control(monitor, {});
    std::optional<HotkeyControl::Press::Kind> kind;
    control.beginCapture([&kind](const HotkeyControl::Press &press) { kind = press.kind; });
    keyboards.press(0, KEY_A);
    ASSERT_TRUE(waitFor([&kind] { return kind.has_value(); }));
    EXPECT_EQ(*kind, HotkeyControl::Press::Kind::Typing);
}

TEST_F(EvdevEventMonitorTest, unreadableKeyboardKeepsAllFromBeingUsed)
{
    keyboards.plugInUnreadable(1);
    EXPECT_EQ(EvdevKeyboards::open(), nullptr);
}

TEST(EvdevKeyboards, areNotThereWithoutDevices)
{
    const MockKeyboards none;
    EXPECT_EQ(EvdevKeyboards::open(), nullptr);
}

TEST(EvdevLayout, findsKeysMissingFromLayouts)
{
    const EvdevLayout layout;
    const auto codes = [&layout](const QString &name) { return layout.codesOf(triggerKeySymbols({name}).first()); };
    EXPECT_THAT(codes(u"Control_R"_s), ElementsAre(KEY_RIGHTCTRL));
    EXPECT_THAT(codes(u"ISO_Level3_Shift"_s), ElementsAre(KEY_RIGHTALT));
    EXPECT_THAT(codes(u"F13"_s), ElementsAre(KEY_F13));
    EXPECT_THAT(codes(u"Pause"_s), ElementsAre(KEY_PAUSE));
    EXPECT_TRUE(codes(u"XF86WakeUp"_s).contains(KEY_FN));
    EXPECT_EQ(layout.symbolsOf(KEY_FN).first, triggerKeySymbols({u"XF86WakeUp"_s}).first());
}

TEST(ActiveTerminal, isComparedWithThisSessions)
{
    QTemporaryFile active;
    ASSERT_TRUE(active.open());
    active.write("tty2\n");
    active.close();
    qputenv("XDG_VTNR", "2");
    EXPECT_TRUE(isOnActiveTerminal(active.fileName()));
    qputenv("XDG_VTNR", "3");
    EXPECT_FALSE(isOnActiveTerminal(active.fileName()));
    EXPECT_TRUE(isOnActiveTerminal(u"/nonexistent"_s));
    qunsetenv("XDG_VTNR");
    EXPECT_TRUE(isOnActiveTerminal(active.fileName()));
}

} // namespace talmo::test
