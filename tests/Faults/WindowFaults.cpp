#include "Faults/FaultFixture.h"

#include "Platform/Linux/X11/XConnection.h"

#include <csignal>

namespace talmo::test {

FAULT(Window, closedBeforeThePaste, "The window is closed while somebody speaks",
      "“No window has keyboard focus. The text is on the clipboard: paste it with Ctrl+V.”")
{
    openQtWindow();
    startTalmo();
    copy(u"clipboard before"_s);
    holdAndSpeak();
    window.reset();
    ASSERT_TRUE(testbed::pollUntil([this] { return desktop.activeWindowTitle().isEmpty(); }, timeout));
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"error: No window has keyboard focus."_s));
    EXPECT_EQ(clipboard(), nextMeant().toUtf8());
    nextDictationWorks();
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
}

FAULT(Window, frozen, "The window hangs",
      "“The window is not responding. The text is on the clipboard and will be inserted when the window recovers.” It "
      "does, and "
      "then the earlier clipboard comes back")
{
    openQtWindow();
    startTalmo();
    copy(u"clipboard before"_s);
    holdAndSpeak();
    signalWindow(SIGSTOP);
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"error: The window is not responding."_s));
    const QString meant = nextMeant();
    EXPECT_EQ(clipboard(), meant.toUtf8());
    signalWindow(SIGCONT);
    EXPECT_TRUE(windowShows(meant));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
    nextDictationWorks();
}

FAULT(Window, takesNoPaste, "The window takes no paste",
      "“No window accepted the text. It is on the clipboard: paste it with Ctrl+V.” The icon's menu and `talmoctl "
      "restore-clipboard` put the earlier clipboard back")
{
    openWindow(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Target"_s, u"0"_s, u"readonly"_s});
    startTalmo();
    copy(u"clipboard before"_s);
    dictate(u"hello world"_s);
    EXPECT_TRUE(talmoSays(u"error: No window accepted the text. It is on the clipboard: paste it with Ctrl+V."_s));
    const QString meant = nextMeant();
    EXPECT_EQ(clipboard(), meant.toUtf8());
    testbed::ChildProcess last(QStringLiteral(TALMO_BIN "/talmoctl"), {u"last"_s}, environment);
    EXPECT_TRUE(last.waitForLine(meant, timeout));
    testbed::ChildProcess raw(QStringLiteral(TALMO_BIN "/talmoctl"), {u"last"_s, u"--raw"_s}, environment);
    EXPECT_TRUE(raw.waitForLine(meant.chopped(1).toLower(), timeout));
    testbed::ChildProcess restore(QStringLiteral(TALMO_BIN "/talmoctl"), {u"restore-clipboard"_s}, environment);
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
    nextDictationWorks();
}

FAULT(Window, anotherComesToTheFront, "Another window comes to the front while somebody speaks",
      "The text goes into the window that is in front at the end")
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    testbed::ChildProcess other(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Another"_s}, environment);
    ASSERT_TRUE(desktop.waitForActiveWindow(u"Another"_s, timeout));
    keyboard.release(key);
    EXPECT_TRUE(other.waitForLine(u"text: "_s + nextMeant(), timeout));
    other.terminate();
    nextDictationWorks();
}

FAULT(Window, keyboardGrabbed, "Another program holds the keyboard, such as a screen locker",
      "“Another program has grabbed the keyboard. The text is on the clipboard: paste it with Ctrl+V.”")
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    {
        XConnection locker;
        const xcb_window_t shown = xcb_generate_id(locker.get());
        constexpr quint32 overrideRedirect = 1;
        xcb_create_window(locker.get(), XCB_COPY_FROM_PARENT, shown, locker.root(), 0, 0, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &overrideRedirect);
        xcb_map_window(locker.get(), shown);
        const XcbPtr<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(
            locker.get(),
            xcb_grab_keyboard(locker.get(), 1, shown, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
            nullptr));
        ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
        keyboard.release(key);
        EXPECT_TRUE(talmoSays(u"error: Another program has grabbed the keyboard."_s));
    }
    EXPECT_EQ(clipboard(), nextMeant().toUtf8());
    nextDictationWorks();
}

FAULT(Window, layoutWithoutPasteKeys, "The keyboard layout has neither V nor Insert",
      "“This keyboard layout has no key for pasting. The text is on the clipboard: paste it from a menu.”")
{
    openQtWindow();
    startTalmo();
    const auto set = [this](const QStringList &expressions) {
        testbed::ChildProcess xmodmap(u"xmodmap"_s, expressions, environment);
        EXPECT_TRUE(testbed::waitUntil([&xmodmap] { return !xmodmap.isRunning(); }, timeout));
    };
    set({u"-e"_s, u"keycode 55 = NoSymbol"_s, u"-e"_s, u"keycode 118 = NoSymbol"_s, u"-e"_s,
         u"keycode 90 = NoSymbol"_s});
    dictate(u"hello world"_s);
    EXPECT_TRUE(talmoSays(u"error: This keyboard layout has no key for pasting."_s));
    EXPECT_EQ(clipboard(), nextMeant().toUtf8());
    set({u"-e"_s, u"keycode 55 = v V"_s});
    nextDictationWorks();
}

FAULT(Window, layoutChangedInMidSentence, "The keyboard layout is changed while somebody speaks", "Nothing")
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    testbed::ChildProcess layout(u"setxkbmap"_s, {u"fr"_s}, environment);
    EXPECT_TRUE(testbed::waitUntil([&layout] { return !layout.isRunning(); }, timeout));
    keyboard.release(key);
    EXPECT_TRUE(windowShows(nextMeant()));
    nextDictationWorks();
}

FAULT(Window, minimised, "The window is minimised while somebody speaks",
      "“No window has keyboard focus. The text is on the clipboard: paste it with Ctrl+V.”")
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    desktop.minimiseActiveWindow();
    ASSERT_TRUE(testbed::pollUntil([this] { return !desktop.activeWindowTitle().contains(u"Target"); }, timeout));
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"error: No window has keyboard focus."_s));
    EXPECT_EQ(clipboard(), nextMeant().toUtf8());
    nextDictationWorks();
}

FAULT(Window, xServerEnds, "The X server ends", "Talmo ends")
{
    startTalmo();
    desktop.killServer();
    EXPECT_TRUE(testbed::waitUntil([this] { return !talmo->isRunning(); }, timeout));
}

FAULT(Window, noDisplay, "There is no display", "Talmo says so and ends")
{
    environment.insert(u"DISPLAY"_s, u":4711"_s);
    testbed::ChildProcess blind(QStringLiteral(TALMO_BIN "/talmo"), {}, environment);
    EXPECT_TRUE(blind.waitForLine(u"talmo: No X display could be opened. Is DISPLAY set?"_s, timeout));
    EXPECT_TRUE(testbed::waitUntil([&blind] { return !blind.isRunning(); }, timeout));
    EXPECT_EQ(blind.terminate(), 1);
}

} // namespace talmo::test
