#include "Platform/Linux/X11/Keys/XHotkeyControl.h"

#include "ChildProcess.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"

#include <QFile>

#include <gmock/gmock.h>

#include <xcb/xtest.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = HotkeyControl::Press::Kind;

constexpr quint32 letterA = 0x61;
constexpr quint32 enter = 0xff0d;
constexpr quint32 escape = 0xff1b;
constexpr quint32 f5 = 0xffc2;
constexpr quint32 f9 = 0xffc6;
constexpr quint32 tools = 0x1008ff81;
constexpr quint8 f13KeyCode = 191;

class XHotkeyControlTest : public testing::Test {
protected:
    XHotkeyControlTest()
    {
        token =
            monitor->addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const FlagsChangedEvent &event) {
                events.push_back((event.modifierFlags & GlobalHotkeyManager::functionFlag) != 0);
            });
    }
    void synchronise()
    {
        const XcbPtr<xcb_get_input_focus_reply_t> done(
            xcb_get_input_focus_reply(other.get(), xcb_get_input_focus(other.get()), nullptr));
    }
    /// Another program's window with the keyboard focus.
    void openWindow()
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
    void tapF13()
    {
        for (const int type : {XCB_KEY_PRESS, XCB_KEY_RELEASE}) {
            xcb_test_fake_input(other.get(), static_cast<quint8>(type), f13KeyCode, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                                0);
        }
        synchronise();
    }
    quint8 keyCode(quint32 symbol) { return *monitor->keyCodesOf(symbol).begin(); }
    /// How many presses of the key the window has got since the last call.
    int pressesInWindow(quint32 symbol)
    {
        synchronise();
        int presses = 0;
        while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(other.get())}) {
            const auto *press = reinterpret_cast<const xcb_key_press_event_t *>(event.get()); // NOLINT
            presses += (event->response_type & 0x7f) == XCB_KEY_PRESS && press->detail == keyCode(symbol) ? 1 : 0;
        }
        return presses;
    }
    bool sees(std::size_t count)
    {
        return waitFor([this, count] { return events.size() >= count; });
    }
    HotkeyControl::Press captured(quint32 symbol)
    {
        std::optional<HotkeyControl::Press> press;
        control.beginCapture([&press](const HotkeyControl::Press &pressed) { press = pressed; });
        keyboard.tap(symbol);
        EXPECT_TRUE(waitFor([&press] { return press.has_value(); }));
        return press.value_or(HotkeyControl::Press());
    }

    testbed::VirtualDesktop desktop;
    std::shared_ptr<XInput2EventMonitor> monitor = std::make_shared<XInput2EventMonitor>(
        std::make_shared<PostedKeys>(), triggerKeySymbols({}), [] { return false; });
    XHotkeyControl control{monitor, {}};
    testbed::VirtualKeyboard keyboard;
    XConnection other;
    std::shared_ptr<EventMonitorToken> token;
    std::vector<bool> events;
};

} // namespace

TEST_F(XHotkeyControlTest, keyInForceAtOnceDoesNotReachTheWindow)
{
    openWindow();
    keyboard.tap(f5);
    EXPECT_EQ(pressesInWindow(f5), 1);
    control.setKeys({u"F5"_s});
    keyboard.press(f5);
    EXPECT_TRUE(sees(1));
    keyboard.release(f5);
    EXPECT_TRUE(sees(2));
    EXPECT_THAT(events, ElementsAre(true, false));
    EXPECT_EQ(pressesInWindow(f5), 0);
    control.setKeys({u"Control_R"_s});
    keyboard.tap(f5);
    EXPECT_EQ(pressesInWindow(f5), 1);
}

TEST_F(XHotkeyControlTest, keyTypesNothingIntoATerminal)
{
    const QString file = desktop.folder() + u"/typed"_s;
    const testbed::ChildProcess terminal(
        u"xterm"_s, {u"-T"_s, u"Target"_s, u"-e"_s, u"sh"_s, u"-c"_s, u"stty -icanon -echo; cat > '%1'"_s.arg(file)},
        desktop.environment());
    ASSERT_TRUE(desktop.waitForActiveWindow(u"Target"_s, 15s));
    ASSERT_TRUE(testbed::pollUntil([&] { return QFile::exists(file); }, 10s));
    control.setKeys({u"F5"_s});
    keyboard.tap(f5);
    ASSERT_TRUE(sees(2));
    keyboard.tap(letterA);
    QByteArray typed;
    ASSERT_TRUE(testbed::pollUntil(
        [&] {
            QFile reader(file);
            typed = reader.open(QFile::ReadOnly) ? reader.readAll() : QByteArray();
            return typed.endsWith('a');
        },
        10s));
    EXPECT_EQ(typed, "a");
}

TEST_F(XHotkeyControlTest, keyWithAModifierStaysTheOtherPrograms)
{
    openWindow();
    control.setKeys({u"F5"_s});
    keyboard.press(testbed::VirtualKeyboard::controlLeft);
    keyboard.tap(f5);
    keyboard.release(testbed::VirtualKeyboard::controlLeft);
    EXPECT_EQ(pressesInWindow(f5), 1);
    keyboard.tap(f5); // Whose events come after those of the shortcut.
    EXPECT_TRUE(sees(2));
    EXPECT_EQ(events.size(), 2U);
}

TEST_F(XHotkeyControlTest, modifierIsShared)
{
    openWindow();
    keyboard.press(testbed::VirtualKeyboard::controlRight);
    EXPECT_TRUE(sees(1));
    EXPECT_EQ(pressesInWindow(testbed::VirtualKeyboard::controlRight), 1);
    keyboard.release(testbed::VirtualKeyboard::controlRight);
    EXPECT_TRUE(sees(2));
}

TEST_F(XHotkeyControlTest, severalKeysCount)
{
    control.setKeys({u"F5"_s, u"F9"_s});
    keyboard.tap(f5);
    EXPECT_TRUE(sees(2));
    keyboard.tap(f9);
    EXPECT_TRUE(sees(4));
}

TEST_F(XHotkeyControlTest, findsF13WhereTheLayoutGivesItAnotherSymbol)
{
    const quint32 symbols[] = {tools, tools};
    xcb_change_keyboard_mapping(other.get(), 1, f13KeyCode, 2, symbols);
    synchronise();
    ASSERT_TRUE(waitFor([this] { return monitor->keyCodesOf(tools).contains(f13KeyCode); }));
    ASSERT_TRUE(monitor->keyCodesOf(0xffca).contains(f13KeyCode));
    std::optional<HotkeyControl::Press> press;
    control.beginCapture([&press](const HotkeyControl::Press &pressed) { press = pressed; });
    tapF13();
    ASSERT_TRUE(waitFor([&press] { return press.has_value(); }));
    EXPECT_EQ(press->key.name, u"F13"_s);
    control.setKeys({u"F13"_s});
    EXPECT_THAT(control.keys().missing, IsEmpty());
    tapF13();
    EXPECT_TRUE(sees(2));
}

TEST_F(XHotkeyControlTest, capturedKeysStartNothing)
{
    EXPECT_EQ(captured(testbed::VirtualKeyboard::controlRight).key.name, u"Control_R"_s);
    const auto press = captured(f9);
    EXPECT_EQ(press.kind, Kind::Usable);
    EXPECT_EQ(press.key.title, u"F9"_s);
    EXPECT_EQ(captured(letterA).kind, Kind::Typing);
    EXPECT_EQ(captured(enter).kind, Kind::Typing);
    EXPECT_EQ(captured(escape).kind, Kind::Cancelled);
    EXPECT_THAT(events, IsEmpty());
    keyboard.tap(testbed::VirtualKeyboard::controlRight);
    EXPECT_TRUE(sees(2)) << "a capture takes one key only";
}

TEST_F(XHotkeyControlTest, reportsKeyTakenByAnotherProgram)
{
    xcb_grab_key(other.get(), 0, other.root(), XCB_MOD_MASK_ANY, keyCode(f9), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    synchronise();
    EXPECT_NE(control.suggestion().value_or(HotkeyControl::Key()).name, u"F9"_s);
    control.setKeys({u"F9"_s});
    EXPECT_THAT(control.keys().taken, ElementsAre(u"F9"_s));
    keyboard.tap(f9);
    EXPECT_TRUE(sees(2)) << "it works even so";
}

TEST_F(XHotkeyControlTest, releasedKeysReachTheWindow)
{
    openWindow();
    control.setKeys({u"F5"_s});
    control.setReleased(true);
    keyboard.tap(f5);
    EXPECT_EQ(pressesInWindow(f5), 1);
    control.setReleased(false);
    keyboard.tap(f5);
    EXPECT_EQ(pressesInWindow(f5), 0);
}

TEST_F(XHotkeyControlTest, suggestsAKeyThatWorks)
{
    const auto key = control.suggestion();
    ASSERT_TRUE(key.has_value());
    control.setKeys({key->name});
    EXPECT_THAT(control.keys().taken, IsEmpty());
    EXPECT_THAT(control.keys().missing, IsEmpty());
}

TEST_F(XHotkeyControlTest, reportsUnknownKeyNames)
{
    control.setKeys({u"Contrl_R"_s, u"a"_s, u"F35"_s});
    EXPECT_THAT(control.keys().unknown, ElementsAre(u"Contrl_R"_s));
    EXPECT_THAT(control.keys().typing, ElementsAre(u"a"_s));
    EXPECT_THAT(control.keys().missing, ElementsAre(u"F35"_s));
}

} // namespace talmo::test
