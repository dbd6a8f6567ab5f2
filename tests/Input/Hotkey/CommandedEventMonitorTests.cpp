#include "Input/Hotkey/CommandedEventMonitor.h"

#include "Support/FakeEventMonitor.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

namespace {

constexpr quint64 fn = GlobalHotkeyManager::functionFlag;

class CommandedEventMonitorTest : public testing::Test {
protected:
    std::shared_ptr<FakeEventMonitor> keys = std::make_shared<FakeEventMonitor>();
    CommandedEventMonitor monitor{keys};
    std::vector<quint64> events;
    std::shared_ptr<EventMonitorToken> token =
        monitor.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask,
                                 [this](const FlagsChangedEvent &event) { events.push_back(event.modifierFlags); });
};

} // namespace

TEST_F(CommandedEventMonitorTest, passesKeyboardOn)
{
    keys->press();
    keys->release();
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(CommandedEventMonitorTest, pressWhileHeldEndsEarlierHold)
{
    monitor.press();
    monitor.press();
    monitor.release();
    EXPECT_THAT(events, ElementsAre(fn, 0U, fn, 0U));
}

TEST_F(CommandedEventMonitorTest, toggleTapsTwiceToBeginAndOnceToEnd)
{
    bool isRecording = false;
    monitor.toggle([&isRecording] { return isRecording; });
    EXPECT_THAT(events, ElementsAre(fn, 0U, fn, 0U));
    events.clear();
    isRecording = true;
    monitor.toggle([this, &isRecording] {
        isRecording = isRecording && events.empty();
        return isRecording;
    });
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(CommandedEventMonitorTest, toggleTapsOnceIfThatBeginsRecording)
{
    monitor.toggle([this] { return !events.empty(); });
    EXPECT_THAT(events, ElementsAre(fn, 0U)) << "the end of an earlier recording was the first tap";
}

TEST_F(CommandedEventMonitorTest, worksWithoutKeyboard)
{
    CommandedEventMonitor alone(nullptr);
    std::vector<quint64> seen;
    const auto installed =
        alone.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask,
                               [&seen](const FlagsChangedEvent &event) { seen.push_back(event.modifierFlags); });
    alone.press();
    alone.release();
    EXPECT_THAT(seen, ElementsAre(fn, 0U));
}

} // namespace talmo::test
