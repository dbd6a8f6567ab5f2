#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"

#include "Base/Log.h"
#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Platform/Linux/X11/Keys/KeyboardLayoutReader.h"
#include "Platform/Linux/X11/Keys/RawInput.h"
#include "Platform/Linux/X11/Keys/TriggerKeyCodes.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace talmo {

namespace {

/// How long a release that may be half of an auto-repeat is held back.
constexpr auto repeatPairTimeout = std::chrono::milliseconds(5);

} // namespace

XInput2EventMonitor::XInput2EventMonitor(std::shared_ptr<PostedKeys> postedKeys, QList<quint32> triggerKeys,
                                         std::function<bool()> isApplicationActive)
    : m_grabs(m_connection),
      m_cancelGrab(m_connection),
      m_watch(m_connection),
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
    m_opcode = RawInput::queryExtension(m_connection);
    if (m_opcode != 0 &&
        !XcbPtr<xcb_generic_error_t>(xcb_request_check(m_connection.get(), RawInput::select(m_connection, false)))) {
        readTriggerKeys();
    } else {
        m_opcode = 0;
        generalLog().error("this X server lacks XInput 2.2: key events cannot be observed");
    }
}

XInput2EventMonitor::~XInput2EventMonitor() = default;

void XInput2EventMonitor::watchInput(quint32 window)
{
    if (isUsable()) {
        m_watch.watch(window);
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
    m_cancelGrab.release();
    const auto layout = readKeyboardLayout(m_connection);
    constexpr xcb_keycode_t none = 0;
    const xcb_keycode_t keyCode = isUsable() ? keyCodeFor(layout, keySym).value_or(none) : none;
    readEvents(); // Those that arrived with the answers.
    if (keyCode == none) {
        return false;
    }
    const bool isGrabbed = m_cancelGrab.grab(layout, keyCode, std::move(onPressed));
    readEvents();
    return isGrabbed;
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
    return isUsable() ? m_monitors.addGlobal(eventMask, std::move(handler)) : nullptr;
}

std::shared_ptr<EventMonitorToken>
XInput2EventMonitor::addLocalMonitor(quint64 eventMask,
                                     std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    // The handler's result is ignored: raw events are copies, and the server delivers the original anyway.
    return isUsable() ? m_monitors.addLocal(eventMask, std::move(handler)) : nullptr;
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
    m_cancelGrab.reportPress(); // After the raw events: the key must count as grabbed when its own one is handled.
    reportCaptured();
}

void XInput2EventMonitor::collect(const xcb_generic_event_t &event)
{
    const int type = event.response_type & 0x7f;
    if (type == XCB_KEY_PRESS) {
        m_cancelGrab.notePress(reinterpret_cast<const xcb_key_press_event_t &>(event).detail); // NOLINT
        return;
    }
    if (type == XCB_DESTROY_NOTIFY) {
        m_watch.noteDestroyed(reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window); // NOLINT
        return;
    }
    const auto &generic = reinterpret_cast<const xcb_ge_generic_event_t &>(event); // NOLINT
    if (type != XCB_GE_GENERIC || generic.extension != m_opcode) {
        return;
    }
    if (RawInput::isClick(generic)) {
        m_watch.noteInput();
    }
    const auto &raw = reinterpret_cast<const xcb_input_raw_key_press_event_t &>(event); // NOLINT
    const auto keyCode = static_cast<quint8>(raw.detail);
    if (generic.event_type == XCB_INPUT_KEY_PRESS || generic.event_type == XCB_INPUT_KEY_RELEASE) {
        collectGrabbed(event);
    } else if (!m_grabs.has(keyCode) && RawInput::isKey(generic)) {
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
    if (isDown) {
        m_cancelGrab.notePress(keyCode);
    }
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
    if (key.isDown && !m_filter.isWatched(key.keyCode) && !m_cancelGrab.has(key.keyCode)) {
        m_watch.noteInput();
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
    m_monitors.report(isDown, m_isApplicationActive());
}

} // namespace talmo
