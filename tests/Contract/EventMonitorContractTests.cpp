#include "Contract/EventMonitorContract.h"

#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Wayland/Sway/SwayEventMonitor.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"
#include "Support/FakeEventMonitor.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"
#include "WaylandDesktop.h"

#include <gmock/gmock.h>

#include <optional>

namespace talmo::test {

using testing::ElementsAre;

namespace {

constexpr quint64 fn = GlobalHotkeyManager::functionFlag;

struct FakeSubject {
    FakeEventMonitor monitor;
    void press() { monitor.press(); }
    void release() { monitor.release(); }
    void setActive(bool active) { monitor.isApplicationActive = active; }
};

struct XInput2Subject {
    testbed::VirtualDesktop desktop;
    bool isActive = false;
    std::shared_ptr<PostedKeys> postedKeys = std::make_shared<PostedKeys>();
    XInput2EventMonitor monitor{postedKeys, triggerKeySymbols({}), [this] { return isActive; }};
    testbed::VirtualKeyboard keyboard;
    void press() { keyboard.press(testbed::VirtualKeyboard::controlRight); }
    void release() { keyboard.release(testbed::VirtualKeyboard::controlRight); }
    void setActive(bool active) { isActive = active; }
};

struct SwaySubject {
    static bool isPossible() { return testbed::WaylandDesktop::isInstalled(); }
    testbed::WaylandDesktop desktop;
    bool isActive = false;
    SwayEventMonitor monitor{SwayIpc::open(), u"Pause"_s, [this] { return isActive; }};
    void press() { desktop.press(testbed::WaylandDesktop::KeyboardKey::Pause); }
    void release() { desktop.release(testbed::WaylandDesktop::KeyboardKey::Pause); }
    void setActive(bool active) { isActive = active; }
};

using Subjects = testing::Types<FakeSubject, XInput2Subject, SwaySubject>;
INSTANTIATE_TYPED_TEST_SUITE_P(Desktops, EventMonitorContract, Subjects);

} // namespace

namespace {

class XInput2EventMonitorTest : public testing::Test {
protected:
    XInput2EventMonitorTest()
    {
        token = subject.monitor.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const auto &event) {
            events.push_back(event.modifierFlags & fn);
        });
    }
    /// Presses and releases the stand-in key and waits for both events: all earlier events have then arrived.
    void flush()
    {
        const auto before = events.size();
        subject.press();
        ASSERT_TRUE(waitFor([&] { return events.size() > before; }));
        subject.release();
        ASSERT_TRUE(waitFor([&] { return events.size() > before + 1; }));
    }
    XInput2Subject subject;
    std::vector<quint64> events;
    std::shared_ptr<EventMonitorToken> token;
};

} // namespace

TEST_F(XInput2EventMonitorTest, seesKeyUnderAnotherProgramsPassiveGrab)
{
    XConnection other;
    for (int code = 8; code < 256; ++code) {
        xcb_grab_key(other.get(), 1, other.root(), XCB_MOD_MASK_ANY, static_cast<xcb_keycode_t>(code),
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    }
    const XcbPtr<xcb_get_input_focus_reply_t> done(
        xcb_get_input_focus_reply(other.get(), xcb_get_input_focus(other.get()), nullptr));
    subject.press();
    ASSERT_TRUE(waitFor([this] { return events.size() == 1; }));
    subject.release();
    ASSERT_TRUE(waitFor([this] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(XInput2EventMonitorTest, doesNotConsumeKeys)
{
    XConnection other;
    const xcb_window_t window = xcb_generate_id(other.get());
    constexpr quint32 mask = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE |
                             XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const quint32 values[] = {1, mask};
    xcb_create_window(other.get(), XCB_COPY_FROM_PARENT, window, other.root(), 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values);
    xcb_map_window(other.get(), window);
    xcb_set_input_focus(other.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    other.flush();
    std::vector<int> seen;
    const auto waitForKinds = [&](int kind) {
        while (true) {
            const XcbPtr<xcb_generic_event_t> event(xcb_wait_for_event(other.get()));
            if (!event) {
                return;
            }
            seen.push_back(event->response_type & 0x7f);
            if (seen.back() == kind) {
                return;
            }
        }
    };
    waitForKinds(XCB_FOCUS_IN);
    subject.press();
    waitForKinds(XCB_KEY_PRESS);
    subject.release();
    waitForKinds(XCB_KEY_RELEASE);
    ASSERT_TRUE(waitFor([this] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(XInput2EventMonitorTest, retractsRightCtrlUsedAsModifierImmediately)
{
    subject.press();
    subject.keyboard.tap('c');
    subject.release();
    ASSERT_TRUE(waitFor([this] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(XInput2EventMonitorTest, ignoresKeysPostedByTalmo)
{
    // Uses the stand-in's own key code: expected once for press and release, it is not reported.
    const auto layoutKey = std::uint8_t(105);
    subject.postedKeys->expect(layoutKey, true);
    subject.postedKeys->expect(layoutKey, false);
    subject.press();
    subject.release();
    testbed::sleepFor(
        std::chrono::milliseconds(20)); // A release followed at once by a press would count as auto-repeat.
    flush();
    EXPECT_THAT(events, ElementsAre(fn, 0U));
}

TEST_F(XInput2EventMonitorTest, isUsable)
{
    EXPECT_TRUE(subject.monitor.isUsable());
    EXPECT_EQ(subject.monitor.addGlobalMonitor(1, [](const auto &) {}), nullptr);
}

} // namespace talmo::test
