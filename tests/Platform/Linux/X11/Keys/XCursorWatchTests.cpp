#include "Platform/Linux/X11/Keys/XCursorWatch.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"
#include "VirtualPointer.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

constexpr quint8 wheelUp = 4;
constexpr quint8 rightButton = 3;

class XCursorWatchTest : public testing::Test {
protected:
    XCursorWatchTest()
    {
        token = monitor->addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask,
                                          [this](const FlagsChangedEvent &) { ++triggerEvents; });
        first = openWindow();
        second = openWindow();
        focus(first);
    }
    xcb_window_t openWindow()
    {
        const xcb_window_t window = xcb_generate_id(other.get());
        const quint32 unmanaged = 1;
        xcb_create_window(other.get(), XCB_COPY_FROM_PARENT, window, other.root(), 0, 0, 100, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
        xcb_map_window(other.get(), window);
        return window;
    }
    void focus(xcb_window_t window)
    {
        xcb_set_input_focus(other.get(), XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME);
        const XcbPtr<xcb_get_input_focus_reply_t> done(
            xcb_get_input_focus_reply(other.get(), xcb_get_input_focus(other.get()), nullptr));
        ASSERT_EQ(done->focus, window);
    }
    /// Dictates, as far as the keyboard is concerned; all earlier events have then arrived.
    void useTrigger()
    {
        const int before = triggerEvents;
        keyboard.press(testbed::VirtualKeyboard::controlRight);
        ASSERT_TRUE(waitFor([&] { return triggerEvents == before + 1; }));
        keyboard.release(testbed::VirtualKeyboard::controlRight);
        ASSERT_TRUE(waitFor([&] { return triggerEvents == before + 2; }));
    }
    bool inputIsSeen()
    {
        return waitFor([this] { return monitor->wasInputSeen(); });
    }

    testbed::VirtualDesktop desktop;
    std::shared_ptr<PostedKeys> postedKeys = std::make_shared<PostedKeys>();
    std::shared_ptr<XInput2EventMonitor> monitor =
        std::make_shared<XInput2EventMonitor>(postedKeys, triggerKeySymbols({}), [] { return false; });
    XCursorWatch watch{monitor};
    testbed::VirtualKeyboard keyboard;
    testbed::VirtualPointer pointer;
    XConnection other;
    xcb_window_t first = XCB_NONE;
    xcb_window_t second = XCB_NONE;
    std::shared_ptr<EventMonitorToken> token;
    int triggerEvents = 0;
};

} // namespace

TEST_F(XCursorWatchTest, markStaysGoodWhileOnlyTheTriggerIsUsed)
{
    EXPECT_FALSE(watch.markPlace());
    useTrigger();
    EXPECT_TRUE(watch.markPlace());
    useTrigger();
    EXPECT_TRUE(watch.markPlace());
}

TEST_F(XCursorWatchTest, keyEndsTheMarkOnce)
{
    watch.markPlace();
    keyboard.tap('a');
    ASSERT_TRUE(inputIsSeen());
    useTrigger();
    EXPECT_FALSE(watch.markPlace());
    useTrigger();
    EXPECT_TRUE(watch.markPlace());
}

TEST_F(XCursorWatchTest, triggerUsedAsModifierEndsTheMark)
{
    watch.markPlace();
    keyboard.press(testbed::VirtualKeyboard::controlRight);
    keyboard.tap('a');
    keyboard.release(testbed::VirtualKeyboard::controlRight);
    ASSERT_TRUE(inputIsSeen());
    EXPECT_FALSE(watch.markPlace());
}

TEST_F(XCursorWatchTest, clickWithAnyButtonEndsTheMark)
{
    watch.markPlace();
    pointer.clickAt({50, 50});
    ASSERT_TRUE(inputIsSeen());
    EXPECT_FALSE(watch.markPlace());
    pointer.click(rightButton);
    ASSERT_TRUE(inputIsSeen());
    EXPECT_FALSE(watch.markPlace());
}

TEST_F(XCursorWatchTest, scrollingAndPointingKeepTheMark)
{
    watch.markPlace();
    pointer.moveTo({60, 60});
    pointer.click(wheelUp);
    useTrigger();
    EXPECT_TRUE(watch.markPlace());
}

TEST_F(XCursorWatchTest, keysPostedByTalmoKeepTheMark)
{
    watch.markPlace();
    constexpr quint8 keyCode = 38; // "a"
    postedKeys->expect(keyCode, true);
    postedKeys->expect(keyCode, false);
    keyboard.tap('a');
    useTrigger();
    EXPECT_TRUE(watch.markPlace());
}

TEST_F(XCursorWatchTest, otherWindowIsAnotherPlace)
{
    watch.markPlace();
    focus(second);
    EXPECT_FALSE(watch.markPlace());
    focus(first);
    EXPECT_FALSE(watch.markPlace());
}

TEST_F(XCursorWatchTest, windowThatGetsTheFocusBackIsTheSamePlace)
{
    watch.markPlace();
    focus(second);
    focus(first);
    EXPECT_TRUE(watch.markPlace());
}

TEST_F(XCursorWatchTest, noFocusIsNoPlace)
{
    focus(XCB_NONE);
    watch.markPlace();
    EXPECT_FALSE(watch.markPlace());
}

TEST_F(XCursorWatchTest, forgottenMarkIsNotGood)
{
    watch.markPlace();
    watch.forget();
    EXPECT_FALSE(watch.markPlace());
    EXPECT_TRUE(watch.markPlace());
}

} // namespace talmo::test
