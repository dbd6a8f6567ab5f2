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
    /// Waits until the server knows what to watch, so that input from elsewhere comes after it.
    bool mark()
    {
        const bool isSamePlace = watch.markPlace();
        monitor->focusedWindow();
        return isSamePlace;
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
    EXPECT_FALSE(mark());
    useTrigger();
    EXPECT_TRUE(mark());
    useTrigger();
    EXPECT_TRUE(mark());
}

TEST_F(XCursorWatchTest, keyEndsTheMarkOnce)
{
    mark();
    keyboard.tap('a');
    ASSERT_TRUE(inputIsSeen());
    useTrigger();
    EXPECT_FALSE(mark());
    useTrigger();
    EXPECT_TRUE(mark());
}

TEST_F(XCursorWatchTest, triggerUsedAsModifierEndsTheMark)
{
    mark();
    keyboard.press(testbed::VirtualKeyboard::controlRight);
    keyboard.tap('a');
    keyboard.release(testbed::VirtualKeyboard::controlRight);
    ASSERT_TRUE(inputIsSeen());
    EXPECT_FALSE(mark());
}

TEST_F(XCursorWatchTest, clickWithAnyButtonEndsTheMark)
{
    mark();
    pointer.clickAt({50, 50});
    ASSERT_TRUE(inputIsSeen());
    EXPECT_FALSE(mark());
    pointer.click(rightButton);
    ASSERT_TRUE(inputIsSeen());
    EXPECT_FALSE(mark());
}

TEST_F(XCursorWatchTest, scrollingAndPointingKeepTheMark)
{
    mark();
    pointer.moveTo({60, 60});
    pointer.click(wheelUp);
    useTrigger();
    EXPECT_TRUE(mark());
}

TEST_F(XCursorWatchTest, keysPostedByTalmoKeepTheMark)
{
    mark();
    constexpr quint8 keyCode = 38; // "a"
    postedKeys->expect(keyCode, true);
    postedKeys->expect(keyCode, false);
    keyboard.tap('a');
    useTrigger();
    EXPECT_TRUE(mark());
}

TEST_F(XCursorWatchTest, otherWindowIsAnotherPlace)
{
    mark();
    focus(second);
    EXPECT_FALSE(mark());
    focus(first);
    EXPECT_FALSE(mark());
}

TEST_F(XCursorWatchTest, windowThatGetsTheFocusBackIsTheSamePlace)
{
    mark();
    focus(second);
    focus(first);
    EXPECT_TRUE(mark());
}

/// The server gives the ids of a program that has ended to the next one.
TEST_F(XCursorWatchTest, windowWithIdOfDestroyedOneIsAnotherPlace)
{
    mark();
    xcb_destroy_window(other.get(), first);
    xcb_flush(other.get());
    ASSERT_TRUE(inputIsSeen());
    const quint32 unmanaged = 1;
    xcb_create_window(other.get(), XCB_COPY_FROM_PARENT, first, other.root(), 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
    xcb_map_window(other.get(), first);
    focus(first);
    EXPECT_FALSE(mark());
}

TEST_F(XCursorWatchTest, noFocusIsNoPlace)
{
    desktop.killWindowManager();
    focus(XCB_NONE);
    mark();
    EXPECT_FALSE(mark());
}

TEST_F(XCursorWatchTest, forgottenMarkIsNotGood)
{
    mark();
    watch.forget();
    EXPECT_FALSE(mark());
    EXPECT_TRUE(mark());
}

} // namespace talmo::test
