#include "Platform/Linux/X11/Keys/XCancelKey.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/X11/Keys/XCursorWatch.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

constexpr quint32 escape = 0xff1b;
constexpr quint32 capsLock = 0xffe5;
constexpr quint8 escapeKeyCode = 9;

/// Another program's window with the keyboard focus.
class XCancelKeyTest : public testing::Test {
protected:
    XCancelKeyTest()
    {
        const xcb_window_t window = xcb_generate_id(other.get());
        const quint32 values[] = {1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE};
        xcb_create_window(other.get(), XCB_COPY_FROM_PARENT, window, other.root(), 0, 0, 100, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        xcb_map_window(other.get(), window);
        xcb_set_input_focus(other.get(), XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME);
        synchronise();
    }
    void synchronise()
    {
        const XcbPtr<xcb_get_input_focus_reply_t> done(
            xcb_get_input_focus_reply(other.get(), xcb_get_input_focus(other.get()), nullptr));
    }
    /// How many times the window has got Escape since the last call: presses, then releases.
    std::pair<int, int> escapesInWindow()
    {
        synchronise();
        std::pair<int, int> seen;
        while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(other.get())}) {
            const auto *press = reinterpret_cast<const xcb_key_press_event_t *>(event.get()); // NOLINT
            const int type = event->response_type & 0x7f;
            seen.first += type == XCB_KEY_PRESS && press->detail == escapeKeyCode ? 1 : 0;
            seen.second += type == XCB_KEY_RELEASE && press->detail == escapeKeyCode ? 1 : 0;
        }
        return seen;
    }
    bool grab()
    {
        return key.grab([this] { ++presses; });
    }
    bool isPressed(int times)
    {
        return waitFor([this, times] { return presses >= times; });
    }

    testbed::VirtualDesktop desktop;
    std::shared_ptr<XInput2EventMonitor> monitor = std::make_shared<XInput2EventMonitor>(
        std::make_shared<PostedKeys>(), triggerKeySymbols({}), [] { return false; });
    XCancelKey key{monitor};
    testbed::VirtualKeyboard keyboard;
    XConnection other;
    int presses = 0;
};

} // namespace

TEST_F(XCancelKeyTest, takesEscapeFromTheFocusedWindowUntilReleased)
{
    ASSERT_TRUE(grab());
    keyboard.tap(escape);
    EXPECT_TRUE(isPressed(1));
    EXPECT_EQ(escapesInWindow(), std::pair(0, 0));
    key.release();
    keyboard.tap(escape);
    EXPECT_EQ(escapesInWindow(), std::pair(1, 1));
    EXPECT_EQ(presses, 1);
}

TEST_F(XCancelKeyTest, pressThatEndsGrabReachesNoWindow)
{
    ASSERT_TRUE(grab());
    keyboard.press(escape);
    ASSERT_TRUE(isPressed(1));
    key.release();
    keyboard.release(escape);
    EXPECT_EQ(escapesInWindow(), std::pair(0, 0));
}

TEST_F(XCancelKeyTest, worksWhileTheTriggerIsHeldAndAfterIt)
{
    keyboard.press(testbed::VirtualKeyboard::controlRight);
    ASSERT_TRUE(grab());
    keyboard.tap(escape);
    EXPECT_TRUE(isPressed(1));
    keyboard.release(testbed::VirtualKeyboard::controlRight);
    keyboard.tap(escape);
    EXPECT_TRUE(isPressed(2));
    EXPECT_EQ(escapesInWindow(), std::pair(0, 0));
}

TEST_F(XCancelKeyTest, worksWithCapsLock)
{
    ASSERT_TRUE(grab());
    keyboard.tap(capsLock);
    keyboard.tap(escape);
    EXPECT_TRUE(isPressed(1));
    keyboard.tap(capsLock);
}

TEST_F(XCancelKeyTest, leavesShortcutsWithOtherModifiers)
{
    key.release();
    ASSERT_TRUE(grab());
    keyboard.press(testbed::VirtualKeyboard::shiftLeft);
    keyboard.tap(escape);
    keyboard.release(testbed::VirtualKeyboard::shiftLeft);
    EXPECT_EQ(escapesInWindow(), std::pair(1, 1));
    EXPECT_EQ(presses, 0);
}

TEST_F(XCancelKeyTest, reportsKeyGrabbedByAnotherProgram)
{
    xcb_grab_key(other.get(), 0, other.root(), 0, escapeKeyCode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    synchronise();
    EXPECT_FALSE(grab());
    key.release();
}

TEST_F(XCancelKeyTest, desktopShortcutWithTheTriggerDoesNotMatter)
{
    xcb_grab_key(other.get(), 0, other.root(), XCB_MOD_MASK_CONTROL, escapeKeyCode, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    synchronise();
    keyboard.press(testbed::VirtualKeyboard::controlRight);
    EXPECT_TRUE(grab());
    keyboard.release(testbed::VirtualKeyboard::controlRight);
    keyboard.tap(escape);
    EXPECT_TRUE(isPressed(1));
}

TEST_F(XCancelKeyTest, discardedRecordingDoesNotCountAsTyping)
{
    XCursorWatch watch(monitor);
    watch.markPlace();
    ASSERT_TRUE(grab());
    keyboard.tap(escape);
    ASSERT_TRUE(isPressed(1));
    key.release();
    EXPECT_TRUE(watch.markPlace());
    keyboard.tap(escape);
    EXPECT_FALSE(watch.markPlace());
}

} // namespace talmo::test
