#pragma once

#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/KeyMonitors.h"
#include "Platform/Linux/Keys/TriggerKeyFilter.h"
#include "Platform/Linux/X11/Keys/InputWatch.h"
#include "Platform/Linux/X11/Keys/PostedKeys.h"
#include "Platform/Linux/X11/Keys/RepeatPairFilter.h"
#include "Platform/Linux/X11/Keys/ReportingGrab.h"
#include "Platform/Linux/X11/Keys/TriggerKeyCodes.h"
#include "Platform/Linux/X11/Keys/XKeyGrabs.h"
#include "Platform/Linux/X11/XConnection.h"

#include <QList>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// Observes the keys of the whole X session as raw XInput 2.2 events, also during another program's grab. Consumes only
/// those that are grabbed. Main thread.
class XInput2EventMonitor final : public EventMonitor {
public:
    /// Opens its own connection; throws Error if there is no display. `triggerKeys` are the symbols of the keys that
    /// stand in for fn. `isApplicationActive` returns whether one of Talmo's own windows has the keyboard focus.
    XInput2EventMonitor(std::shared_ptr<PostedKeys> postedKeys, QList<quint32> triggerKeys,
                        std::function<bool()> isApplicationActive);
    ~XInput2EventMonitor() override;

    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

    /// Whether the server has XInput 2.2 and the connection is alive, so that keys can be observed.
    bool isUsable() const { return m_opcode != 0 && !m_connection.isBroken(); }

    /// Notes the first key that the user presses from now on, other than a trigger key, the first click, or that the
    /// window is destroyed. Only until then does the pointer send events to this program. Zero: no longer.
    void watchInput(quint32 window);
    /// Whether there has been any of these since watchInput(window), by the time of the last focusedWindow().
    bool wasInputSeen() const { return m_watch.wasInputSeen(); }
    /// The window with the keyboard focus; zero if there is none. Handles all input that precedes the answer.
    quint32 focusedWindow();

    /// Takes a key from all other programs: its presses call this instead, with or without the modifiers that are held
    /// now. False if another program has grabbed the key alone.
    bool grabKey(quint32 keySym, std::function<void()> onPressed);
    void ungrabKey() { m_cancelGrab.release(); }

    /// Takes effect immediately. Those that are not modifiers are kept from the other programs.
    void setTriggerKeys(const QList<quint32> &triggerKeys);
    /// While released, the other programs get all keys.
    void setTriggersReleased(bool areReleased);
    /// See TriggerKeyCodes.h.
    std::set<quint8> keyCodesOf(quint32 keySym) const { return talmo::keyCodesOf(m_layout, keySym); }
    /// The trigger keys that could not be kept from the other programs.
    const std::set<quint8> &refusedKeys() const { return m_grabs.refused(); }
    bool isKeyFree(quint8 keyCode) { return m_grabs.isFree(keyCode); }

    /// Passes the next key press to `onPress`, with the symbols that the key has without and with Shift. Until then no
    /// press counts. Null: no longer.
    using OnPress = std::function<void(quint8 keyCode, quint32 plain, quint32 shifted)>;
    void captureKey(OnPress onPress) { m_onCaptured = std::move(onPress); }

private:
    void readTriggerKeys();
    void grabTriggerKeys();
    void reportCaptured();
    void releaseLostKeys(const KeyboardLayout &layout);
    void readEvents();
    void collect(const xcb_generic_event_t &event);
    void collectGrabbed(const xcb_generic_event_t &event);
    void handleCollected(bool hasTimedOut);
    void handleKey(const RawKey &key);
    void reportWithheld();
    void report(bool isDown);

    XConnection m_connection;
    XKeyGrabs m_grabs;
    ReportingGrab m_cancelGrab;
    InputWatch m_watch;
    /// As of the last change.
    KeyboardLayout m_layout;
    std::shared_ptr<PostedKeys> m_postedKeys;
    QList<quint32> m_triggerKeys;
    std::function<bool()> m_isApplicationActive;
    quint8 m_opcode = 0;
    QSocketNotifier m_notifier;
    TriggerKeyFilter m_filter;
    RepeatPairFilter m_collected;
    QTimer m_timeout;
    QTimer m_withheld;
    bool m_areTriggersReleased = false;
    OnPress m_onCaptured;
    /// Zero if none was pressed.
    quint8 m_captured = 0;
    KeyMonitors m_monitors;
};

} // namespace talmo
