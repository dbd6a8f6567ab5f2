#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"

#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/Wayland/Sway/SwayEventMonitor.h"
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
using testing::IsEmpty;

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
    testbed::WaylandDesktop desktop;
    bool isActive = false;
    SwayEventMonitor monitor{SwayIpc::open(), u"Pause"_s, [this] { return isActive; }};
    void press() { desktop.press(testbed::WaylandDesktop::KeyboardKey::Pause); }
    void release() { desktop.release(testbed::WaylandDesktop::KeyboardKey::Pause); }
    void setActive(bool active) { isActive = active; }
};

template <typename Subject>
class EventMonitorContract : public testing::Test {
protected:
    void SetUp() override
    {
        if (std::is_same_v<Subject, SwaySubject> && !testbed::WaylandDesktop::isInstalled()) {
            GTEST_SKIP() << "sway is not installed";
        }
        m_subject.emplace();
    }
    void addBoth()
    {
        global = subject().monitor.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const auto &event) {
            globalEvents.push_back(event.modifierFlags & fn);
        });
        local = subject().monitor.addLocalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const auto &event) {
            localEvents.push_back(event.modifierFlags & fn);
            return std::optional(event);
        });
    }
    bool waitForEvents(std::size_t count)
    {
        return waitFor([&] { return globalEvents.size() + localEvents.size() >= count; });
    }
    Subject &subject() { return *m_subject; }
    std::vector<quint64> globalEvents;
    std::vector<quint64> localEvents;
    std::shared_ptr<EventMonitorToken> global;
    std::shared_ptr<EventMonitorToken> local;

private:
    std::optional<Subject> m_subject;
};

using Subjects = testing::Types<FakeSubject, XInput2Subject, SwaySubject>;
TYPED_TEST_SUITE(EventMonitorContract, Subjects);

} // namespace

TYPED_TEST(EventMonitorContract, seesPressAndReleaseInOtherApplications)
{
    this->addBoth();
    ASSERT_TRUE(this->global && this->local);
    this->subject().press();
    ASSERT_TRUE(this->waitForEvents(1));
    this->subject().release();
    ASSERT_TRUE(this->waitForEvents(2));
    EXPECT_THAT(this->globalEvents, ElementsAre(fn, 0U));
    EXPECT_THAT(this->localEvents, IsEmpty());
}

TYPED_TEST(EventMonitorContract, localMonitorSeesEventsWhenApplicationIsActive)
{
    this->addBoth();
    this->subject().setActive(true);
    this->subject().press();
    ASSERT_TRUE(this->waitForEvents(1));
    this->subject().release();
    ASSERT_TRUE(this->waitForEvents(2));
    EXPECT_THAT(this->localEvents, ElementsAre(fn, 0U));
    EXPECT_THAT(this->globalEvents, IsEmpty());
}

TYPED_TEST(EventMonitorContract, monitorReceivesNothingAfterTokenIsReleased)
{
    this->addBoth();
    this->global.reset();
    std::vector<quint64> other;
    const auto second =
        this->subject().monitor.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [&other](const auto &event) {
            other.push_back(event.modifierFlags & fn);
        });
    this->subject().press();
    ASSERT_TRUE(waitFor([&other] { return !other.empty(); }));
    EXPECT_THAT(this->globalEvents, IsEmpty());
    this->subject().release();
    ASSERT_TRUE(waitFor([&other] { return other.size() == 2; }));
}

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
