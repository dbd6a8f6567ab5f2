#pragma once

#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/KeyMonitors.h"
#include "Platform/Linux/Evdev/EvdevKeyboards.h"
#include "Platform/Linux/Evdev/EvdevLayout.h"
#include "Platform/Linux/Keys/TriggerKeyFilter.h"

#include <QList>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <set>

namespace talmo {

/// The dictation key as the kernel reports it, independent of the desktop. Other programs get the key as well. Main
/// thread.
class EvdevEventMonitor final : public EventMonitor {
public:
    struct Questions {
        /// Whether one of Talmo's own windows has the keyboard focus.
        std::function<bool()> isApplicationActive;
        /// Whether the keyboards belong to this session now; a press in another one does not count.
        std::function<bool()> isSessionActive;
    };

    EvdevEventMonitor(std::unique_ptr<EvdevKeyboards> keyboards, const QList<quint32> &triggerKeys,
                      Questions questions);

    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

    /// Takes effect immediately.
    void setTriggerKeys(const QList<quint32> &triggerKeys);
    const EvdevLayout &layout() const { return m_layout; }

    /// Passes the next key press to `onPress`; until then none counts. Null: no longer.
    using OnPress = std::function<void(int code)>;
    void captureKey(OnPress onPress) { m_onCaptured = std::move(onPress); }

private:
    void handleKey(int code, bool isDown);
    void handleChange(std::optional<bool> change);
    /// Zero for a key that is not a trigger.
    std::uint8_t triggerOf(int code) const;

    std::unique_ptr<EvdevKeyboards> m_keyboards;
    EvdevLayout m_layout;
    Questions m_questions;
    /// The filter's numbers for kernel codes, which may be larger than it takes. A number is never reused for another
    /// key.
    std::map<int, std::uint8_t> m_triggers;
    TriggerKeyFilter m_filter;
    QTimer m_withheld;
    OnPress m_onCaptured;
    KeyMonitors m_monitors;
};

} // namespace talmo
