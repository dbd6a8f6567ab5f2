#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"

#include "Base/Log.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/X11/Keys/KeyboardLayoutReader.h"
#include "Platform/Linux/X11/Keys/TriggerKeyCodes.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace talmo {

namespace {

/// How long a release that may be half of an auto-repeat is held back.
constexpr auto repeatPairTimeout = std::chrono::milliseconds(5);

constexpr quint32 rawKeys = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
constexpr quint32 rawClicks = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_TOUCH_BEGIN;

/// Turning the wheel scrolls; the text cursor stays where it is.
bool isWheel(quint32 button)
{
    constexpr quint32 firstWheelButton = 4;
    constexpr quint32 lastWheelButton = 7;
    return button >= firstWheelButton && button <= lastWheelButton;
}

} // namespace

struct XInput2EventMonitor::Monitor final : public EventMonitorToken {
    bool isGlobal = false;
    std::function<void(const FlagsChangedEvent &)> handler;
};

XInput2EventMonitor::XInput2EventMonitor(std::shared_ptr<PostedKeys> postedKeys, QList<quint32> triggerKeys,
                                         std::function<bool()> isApplicationActive)
    : m_grabs(m_connection),
      m_postedKeys(std::move(postedKeys)),
      m_triggerKeys(std::move(triggerKeys)),
      m_isApplicationActive(std::move(isApplicationActive)),
      m_notifier(m_connection.fileDescriptor(), QSocketNotifier::Read),
      m_collected([this](std::uint8_t keyCode) { return m_filter.isWatched(keyCode); })
{
    m_timeout.setSingleShot(true);
    m_timeout.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timeout, &QTimer::timeout, &m_timeout, [this] {
        handleCollected(true);
        reportCaptured();
    });
    m_withheld.setSingleShot(true);
    m_withheld.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_withheld, &QTimer::timeout, &m_withheld, [this] { reportWithheld(); });
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { readEvents(); });
    if (queryExtension() &&
        !XcbPtr<xcb_generic_error_t>(xcb_request_check(m_connection.get(), selectRawInput(false)))) {
        readTriggerKeys();
    } else {
        m_opcode = 0;
        generalLog().error("this X server lacks XInput 2.2: key events cannot be observed");
    }
}

XInput2EventMonitor::~XInput2EventMonitor() = default;

bool XInput2EventMonitor::queryExtension()
{
    auto *connection = m_connection.get();
    const auto *extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    m_opcode = extension->major_opcode;
    // For clients of version 2.0, servers hide raw events during another program's grab.
    const XcbPtr<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
    return version && (version->major_version > 2 || (version->major_version == 2 && version->minor_version >= 2));
}

xcb_void_cookie_t XInput2EventMonitor::selectRawInput(bool withClicks)
{
    // Master devices only: the physical ones would deliver every key twice.
    struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } selection{};
    selection.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    selection.head.mask_len = 1;
    selection.mask = withClicks ? rawKeys | rawClicks : rawKeys;
    return xcb_input_xi_select_events_checked(m_connection.get(), m_connection.root(), 1, &selection.head);
}

void XInput2EventMonitor::watchInput(quint32 window)
{
    m_wasInputSeen = false;
    if (!isUsable() || m_watchedWindow == window) {
        return;
    }
    const auto watchEnd = [this](quint32 watched, quint32 mask) {
        if (watched != 0) { // It may be gone; the error says nothing new.
            xcb_change_window_attributes(m_connection.get(), watched, XCB_CW_EVENT_MASK, &mask);
        }
    };
    watchEnd(m_watchedWindow, XCB_EVENT_MASK_NO_EVENT);
    watchEnd(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    if ((window != 0) != (m_watchedWindow != 0)) {
        // Not waited for: this may be called in the middle of handling events.
        xcb_discard_reply(m_connection.get(), selectRawInput(window != 0).sequence);
    }
    m_watchedWindow = window;
    m_connection.flush();
}

void XInput2EventMonitor::noteInput()
{
    if (m_watchedWindow != 0) {
        watchInput(0);
        m_wasInputSeen = true;
    }
}

quint32 XInput2EventMonitor::focusedWindow()
{
    auto *connection = m_connection.get();
    const XcbPtr<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    readEvents();
    const bool isWindow = reply && reply->focus != XCB_INPUT_FOCUS_POINTER_ROOT && reply->focus != m_connection.root();
    return isWindow ? reply->focus : static_cast<quint32>(XCB_INPUT_FOCUS_NONE);
}

bool XInput2EventMonitor::grabKey(quint32 keySym, std::function<void()> onPressed)
{
    ungrabKey();
    const auto layout = readKeyboardLayout(m_connection);
    constexpr xcb_keycode_t none = 0;
    const xcb_keycode_t keyCode = isUsable() ? keyCodeFor(layout, keySym).value_or(none) : none;
    readEvents(); // Those that arrived with the answers.
    if (keyCode == none) {
        return false;
    }
    auto *connection = m_connection.get();
    std::vector<std::pair<quint16, xcb_void_cookie_t>> requests;
    for (const auto modifiers : modifiersToGrab(layout)) {
        requests.emplace_back(modifiers, xcb_grab_key_checked(connection, 0, m_connection.root(), modifiers, keyCode,
                                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool isGrabbed = true;
    for (const auto &[modifiers, cookie] : requests) {
        const XcbPtr<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
        // Together with the trigger it may be a shortcut of the desktop's; alone it discards the recording even so.
        isGrabbed = isGrabbed && (!error || (modifiers & ~lockModifiers) != 0);
    }
    m_grabbedKey = keyCode;
    m_onGrabbedKey = std::move(onPressed);
    readEvents();
    return isGrabbed;
}

void XInput2EventMonitor::ungrabKey()
{
    if (m_grabbedKey != 0) {
        xcb_ungrab_key(m_connection.get(), m_grabbedKey, m_connection.root(), XCB_MOD_MASK_ANY);
        m_connection.flush();
    }
    m_grabbedKey = 0;
    m_wasGrabbedKeyPressed = false;
    m_onGrabbedKey = {};
}

/// After the raw events, so that the key is still known as grabbed when its own raw event is handled.
void XInput2EventMonitor::reportGrabbedKey()
{
    if (std::exchange(m_wasGrabbedKeyPressed, false) && m_onGrabbedKey) {
        const auto report = m_onGrabbedKey; // It may end the grab.
        report();
    }
}

void XInput2EventMonitor::readTriggerKeys()
{
    m_layout = readKeyboardLayout(m_connection);
    std::set<std::uint8_t> keyCodes;
    for (const auto keySym : m_triggerKeys) {
        keyCodes.merge(talmo::keyCodesOf(m_layout, keySym));
    }
    m_filter.setKeyCodes(std::move(keyCodes));
    releaseLostKeys(m_layout);
    grabTriggerKeys();
}

void XInput2EventMonitor::grabTriggerKeys()
{
    std::set<std::uint8_t> keyCodes;
    for (const auto keySym : m_triggerKeys) {
        if (!m_areTriggersReleased && !isModifierKey(keySym)) {
            keyCodes.merge(talmo::keyCodesOf(m_layout, keySym));
        }
    }
    m_grabs.set(keyCodes);
}

void XInput2EventMonitor::setTriggerKeys(const QList<quint32> &triggerKeys)
{
    m_triggerKeys = triggerKeys;
    readTriggerKeys();
    readEvents(); // Those that arrived with the answers.
}

void XInput2EventMonitor::setTriggersReleased(bool areReleased)
{
    m_areTriggersReleased = areReleased;
    grabTriggerKeys();
    readEvents();
}

/// After the other events, since it may change the trigger keys.
void XInput2EventMonitor::reportCaptured()
{
    const quint8 keyCode = std::exchange(m_captured, 0);
    const auto report = keyCode != 0 ? std::exchange(m_onCaptured, {}) : OnPress();
    if (!report) {
        return;
    }
    const auto [plain, shifted] = symbolsOf(m_layout, keyCode);
    report(keyCode, plain, shifted);
}

/// A keyboard that is replaced or reconfigured may never send the release of a held key.
void XInput2EventMonitor::releaseLostKeys(const KeyboardLayout &layout)
{
    const auto held = m_filter.held(); // A copy, since the set changes below.
    for (const auto keyCode : held) {
        const auto end = layout.heldKeys.end();
        if (std::find(layout.heldKeys.begin(), end, keyCode) == end && m_filter.keyUp(keyCode)) {
            report(false);
        }
    }
}

std::shared_ptr<EventMonitorToken>
XInput2EventMonitor::addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler)
{
    if (!isUsable() || (eventMask & GlobalHotkeyManager::flagsChangedMask) == 0) {
        return nullptr;
    }
    auto monitor = std::make_shared<Monitor>();
    monitor->isGlobal = true;
    monitor->handler = std::move(handler);
    m_monitors.push_back(monitor);
    return monitor;
}

std::shared_ptr<EventMonitorToken>
XInput2EventMonitor::addLocalMonitor(quint64 eventMask,
                                     std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    if (!isUsable() || (eventMask & GlobalHotkeyManager::flagsChangedMask) == 0) {
        return nullptr;
    }
    auto monitor = std::make_shared<Monitor>();
    // The handler's result is ignored: raw events are copies, and the server delivers the original anyway.
    monitor->handler = [handler = std::move(handler)](const FlagsChangedEvent &event) { handler(event); };
    m_monitors.push_back(monitor);
    return monitor;
}

void XInput2EventMonitor::readEvents()
{
    // Reading the keyboard state waits for replies, and events that arrive with those are found only by polling again:
    // nothing else would wake this thread for them.
    bool isMappingChanged = true;
    while (isMappingChanged) {
        isMappingChanged = false;
        while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
            isMappingChanged = isMappingChanged || (event->response_type & 0x7f) == XCB_MAPPING_NOTIFY;
            collect(*event);
        }
        if (isMappingChanged) {
            readTriggerKeys();
        }
    }
    if (m_connection.isBroken()) {
        m_notifier.setEnabled(false); // The end of file would wake this thread endlessly.
        generalLog().error("the connection to the X server was lost: key events are no longer observed");
        return;
    }
    handleCollected(false);
    reportGrabbedKey();
    reportCaptured();
}

void XInput2EventMonitor::collect(const xcb_generic_event_t &event)
{
    if ((event.response_type & 0x7f) == XCB_KEY_PRESS) {
        const auto &press = reinterpret_cast<const xcb_key_press_event_t &>(event); // NOLINT
        m_wasGrabbedKeyPressed = m_wasGrabbedKeyPressed || press.detail == m_grabbedKey;
        return;
    }
    if ((event.response_type & 0x7f) == XCB_DESTROY_NOTIFY) {
        const auto &destroyed = reinterpret_cast<const xcb_destroy_notify_event_t &>(event); // NOLINT
        if (destroyed.window == m_watchedWindow) {
            noteInput(); // Another window may get its id.
        }
        return;
    }
    const auto &generic = reinterpret_cast<const xcb_ge_generic_event_t &>(event); // NOLINT
    if ((event.response_type & 0x7f) != XCB_GE_GENERIC || generic.extension != m_opcode) {
        return;
    }
    const auto &raw = reinterpret_cast<const xcb_input_raw_key_press_event_t &>(event); // NOLINT
    if (generic.event_type == XCB_INPUT_RAW_TOUCH_BEGIN ||
        (generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS && !isWheel(raw.detail))) {
        noteInput();
    }
    const auto keyCode = static_cast<quint8>(raw.detail);
    if (generic.event_type == XCB_INPUT_KEY_PRESS || generic.event_type == XCB_INPUT_KEY_RELEASE) {
        collectGrabbed(event);
    } else if (!m_grabs.has(keyCode) &&
               (generic.event_type == XCB_INPUT_RAW_KEY_PRESS || generic.event_type == XCB_INPUT_RAW_KEY_RELEASE)) {
        m_collected.push({keyCode, raw.sourceid, generic.event_type == XCB_INPUT_RAW_KEY_PRESS, raw.time});
    }
}

/// A key that is kept from the other programs counts by its grab alone: with a modifier, there is none. While one is
/// held, all keys arrive in this way as well.
void XInput2EventMonitor::collectGrabbed(const xcb_generic_event_t &event)
{
    const auto &key = reinterpret_cast<const xcb_input_key_press_event_t &>(event); // NOLINT
    const auto keyCode = static_cast<quint8>(key.detail);
    const bool isDown = key.event_type == XCB_INPUT_KEY_PRESS;
    m_wasGrabbedKeyPressed = m_wasGrabbedKeyPressed || (isDown && keyCode == m_grabbedKey);
    const bool isRepeated = (key.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0;
    if (m_grabs.has(keyCode) && !isRepeated) {
        m_collected.push({keyCode, key.sourceid, isDown, key.time});
    }
}

void XInput2EventMonitor::handleCollected(bool hasTimedOut)
{
    while (const auto key = m_collected.take(hasTimedOut)) {
        handleKey(*key);
    }
    if (m_collected.isHoldingBack() && !m_timeout.isActive()) {
        m_timeout.start(repeatPairTimeout);
    }
}

void XInput2EventMonitor::handleKey(const RawKey &key)
{
    if (m_postedKeys->take(key.keyCode, key.isDown)) {
        return;
    }
    if (key.isDown && m_onCaptured) {
        m_captured = m_captured != 0 ? m_captured : key.keyCode;
        return;
    }
    if (key.isDown && !m_filter.isWatched(key.keyCode) && key.keyCode != m_grabbedKey) {
        noteInput();
    }
    const auto now = std::chrono::steady_clock::now();
    const auto change = key.isDown ? m_filter.keyDown(key.keyCode, now) : m_filter.keyUp(key.keyCode);
    const auto &held = m_filter.held();
    m_postedKeys->setTriggerGrabbed(
        std::any_of(held.begin(), held.end(), [this](auto keyCode) { return m_grabs.has(keyCode); }));
    if (change) {
        report(*change);
    }
    if (const auto due = m_filter.withheldUntil()) {
        m_withheld.start(std::chrono::ceil<std::chrono::milliseconds>(*due - now));
    } else {
        m_withheld.stop();
    }
}

void XInput2EventMonitor::reportWithheld()
{
    const auto now = std::chrono::steady_clock::now();
    if (m_filter.timePassed(now)) {
        report(true);
    } else if (const auto due = m_filter.withheldUntil()) {
        m_withheld.start(std::chrono::ceil<std::chrono::milliseconds>(*due - now)); // The timer fired a little early.
    }
}

void XInput2EventMonitor::report(bool isDown)
{
    const FlagsChangedEvent event{isDown ? GlobalHotkeyManager::functionFlag : 0};
    const bool isGlobal = !m_isApplicationActive();
    const auto monitors = m_monitors; // A handler may add or remove monitors.
    for (const auto &weak : monitors) {
        const auto monitor = weak.lock();
        if (monitor && monitor->isGlobal == isGlobal) {
            monitor->handler(event);
        }
    }
}

} // namespace talmo
