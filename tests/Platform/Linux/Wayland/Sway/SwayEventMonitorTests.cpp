#include "Platform/Linux/Wayland/Sway/SwayEventMonitor.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "WaylandDesktop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

namespace {

constexpr quint64 fn = GlobalHotkeyManager::functionFlag;

class SwayEventMonitorTest : public testing::Test {
protected:
    using Key = testbed::WaylandDesktop::KeyboardKey;

    void SetUp() override
    {
        if (!testbed::WaylandDesktop::isInstalled()) {
            GTEST_SKIP() << "sway is not installed";
        }
        desktop.emplace();
        monitor.emplace(SwayIpc::open(), u"Pause"_s, [] { return false; });
        token = monitor->addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask,
                                          [this](const auto &event) { events.push_back(event.modifierFlags); });
        ASSERT_NE(token, nullptr);
    }
    bool waitForEvents(std::size_t count)
    {
        return waitFor([this, count] { return events.size() >= count; });
    }

    std::optional<testbed::WaylandDesktop> desktop;
    std::optional<SwayEventMonitor> monitor;
    std::vector<quint64> events;
    std::shared_ptr<EventMonitorToken> token;
};

} // namespace

TEST_F(SwayEventMonitorTest, pressAfterMissedReleaseEndsEarlierHold)
{
    desktop->press(Key::Pause);
    ASSERT_TRUE(waitForEvents(1));
    desktop->press(Key::C); // sway then reports no release.
    desktop->release(Key::Pause);
    desktop->release(Key::C);
    desktop->press(Key::Pause);
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre(fn, 0U, fn));
}

TEST_F(SwayEventMonitorTest, keyWorksAfterConfigurationIsReloaded)
{
    desktop->ask({u"reload"_s});
    ASSERT_TRUE(testbed::pollUntil(
        [this] {
            desktop->press(Key::Pause);
            desktop->release(Key::Pause);
            return events.size() >= 2;
        },
        std::chrono::seconds(10)));
}

TEST_F(SwayEventMonitorTest, returnsKeyToOtherProgramsAtTheEnd)
{
    monitor.reset();
    EXPECT_EQ(desktop->ask({u"--raw"_s, u"unbindsym --no-repeat Pause"_s}), QByteArray()) << "nothing is bound";
}

TEST_F(SwayEventMonitorTest, isUnusableWithoutSway)
{
    qunsetenv("SWAYSOCK");
    EXPECT_EQ(SwayIpc::open(), nullptr);
    qputenv("SWAYSOCK", "/nonexistent/socket");
    EXPECT_EQ(SwayIpc::open(), nullptr);
}

} // namespace talmo::test
