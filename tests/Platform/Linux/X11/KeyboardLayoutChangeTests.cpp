#include "ChildProcess.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

namespace {

constexpr quint64 fn = GlobalHotkeyManager::functionFlag;
constexpr quint32 composeKey = 0xff20;

class KeyboardLayoutChange : public testing::Test {
protected:
    KeyboardLayoutChange()
    {
        token = monitor.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask,
                                         [this](const auto &event) { events.push_back(event.modifierFlags & fn); });
    }
    void setLayout(const QStringList &arguments)
    {
        testbed::ChildProcess layout(u"setxkbmap"_s, arguments, desktop.environment());
        ASSERT_TRUE(waitFor([&layout] { return !layout.isRunning(); }));
    }
    bool waitForEvents(std::size_t count)
    {
        return waitFor([this, count] { return events.size() >= count; });
    }
    testbed::VirtualDesktop desktop;
    XInput2EventMonitor monitor{std::make_shared<PostedKeys>(), triggerKeySymbols({}), [] { return false; }};
    testbed::VirtualKeyboard keyboard;
    std::vector<quint64> events;
    std::shared_ptr<EventMonitorToken> token;
};

} // namespace

TEST_F(KeyboardLayoutChange, keyRemappedWhileHeldIsStillReleased)
{
    keyboard.press(testbed::VirtualKeyboard::controlRight);
    ASSERT_TRUE(waitForEvents(1));
    setLayout({u"us"_s, u"-option"_s, u"compose:rctrl"_s});
    testbed::sleepFor(std::chrono::milliseconds(200));
    keyboard.release(composeKey); // The held key's new name.
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(KeyboardLayoutChange, layoutChangeWhileHeldIsNotARelease)
{
    keyboard.press(testbed::VirtualKeyboard::controlRight);
    ASSERT_TRUE(waitForEvents(1));
    setLayout({u"de"_s});
    testbed::sleepFor(std::chrono::milliseconds(200));
    EXPECT_THAT(events, ElementsAre(fn));
    keyboard.release(testbed::VirtualKeyboard::controlRight);
    ASSERT_TRUE(waitForEvents(2));
}

} // namespace talmo::test
