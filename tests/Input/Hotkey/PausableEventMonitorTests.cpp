#include "Input/Hotkey/PausableEventMonitor.h"

#include "Support/FakeEventMonitor.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr quint64 fn = GlobalHotkeyManager::functionFlag;
constexpr quint64 shift = quint64(1) << 17;

class PausableEventMonitorTest : public testing::Test {
protected:
    std::shared_ptr<FakeEventMonitor> keys = std::make_shared<FakeEventMonitor>();
    bool isPaused = false;
    PausableEventMonitor monitor{keys, [this] { return isPaused; }};
    std::vector<quint64> global;
    std::vector<quint64> local;
    std::shared_ptr<EventMonitorToken> globalToken =
        monitor.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask,
                                 [this](const FlagsChangedEvent &event) { global.push_back(event.modifierFlags); });
    std::shared_ptr<EventMonitorToken> localToken =
        monitor.addLocalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const FlagsChangedEvent &event) {
            local.push_back(event.modifierFlags);
            return std::optional<FlagsChangedEvent>();
        });
};

} // namespace

TEST_F(PausableEventMonitorTest, passesEverythingOnWhileNotPaused)
{
    keys->press();
    keys->release();
    keys->isApplicationActive = true;
    keys->press();
    EXPECT_THAT(global, ElementsAre(fn, 0U));
    EXPECT_THAT(local, ElementsAre(fn));
    EXPECT_THAT(keys->masks, ElementsAre(GlobalHotkeyManager::flagsChangedMask, GlobalHotkeyManager::flagsChangedMask));
    EXPECT_THAT(keys->delivered, ElementsAre(std::nullopt)) << "the handler decides what is delivered";
}

TEST_F(PausableEventMonitorTest, passesNoPressOnWhilePaused)
{
    isPaused = true;
    keys->press();
    keys->release();
    keys->isApplicationActive = true;
    keys->press();
    EXPECT_THAT(global, ElementsAre(0U));
    EXPECT_THAT(local, IsEmpty());
    EXPECT_THAT(keys->delivered, ElementsAre(FlagsChangedEvent{fn})) << "Talmo's own windows still get it";
}

TEST_F(PausableEventMonitorTest, passesReleaseOfEarlierPressOn)
{
    keys->press();
    isPaused = true;
    keys->release();
    EXPECT_THAT(global, ElementsAre(fn, 0U));
}

TEST_F(PausableEventMonitorTest, passesOtherModifiersOn)
{
    isPaused = true;
    keys->send(shift);
    EXPECT_THAT(global, ElementsAre(shift));
}

TEST_F(PausableEventMonitorTest, failsWhereTheMonitorFails)
{
    keys->offersGlobal = false;
    EXPECT_EQ(monitor.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [](const FlagsChangedEvent &) {}),
              nullptr);
}

} // namespace talmo::test
