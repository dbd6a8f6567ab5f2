#pragma once

#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/KeyMonitors.h"

#include <memory>
#include <vector>

namespace talmo {

/// Adds presses and releases that other programs ask for to those of the keyboard, so that one gesture recogniser sees
/// both: for desktops that let Talmo see no keys, and for keys of the user's choice. Main thread.
class CommandedEventMonitor final : public EventMonitor {
public:
    explicit CommandedEventMonitor(std::shared_ptr<EventMonitor> monitor);

    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

    /// A press while the key is held means that its release was missed.
    void press();
    void release();
    /// Starts recording hands-free as a quick double-tap does, or ends a recording.
    void toggle(const std::function<bool()> &isRecording);

private:
    std::shared_ptr<EventMonitor> m_monitor;
    KeyMonitors m_monitors;
    bool m_isHeld = false;
};

} // namespace talmo
