#pragma once

#include "Input/Hotkey/EventMonitor.h"

#include <functional>
#include <memory>

namespace talmo {

/// Lets no press of the dictation key through while it is paused. The release of a press that got through does. Main
/// thread.
class PausableEventMonitor final : public EventMonitor {
public:
    /// `isPaused` is called for each press.
    PausableEventMonitor(std::shared_ptr<EventMonitor> monitor, std::function<bool()> isPaused);

    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

private:
    std::shared_ptr<EventMonitor> m_monitor;
    std::function<bool()> m_isPaused;
};

} // namespace talmo
