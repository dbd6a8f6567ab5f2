#pragma once

#include "Input/Hotkey/EventMonitor.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace talmo {

/// The monitors of an EventMonitor that only sees presses and releases of the key. Main thread.
class KeyMonitors {
public:
    using Handler = std::function<void(const FlagsChangedEvent &)>;

    using LocalHandler = std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)>;

    /// `companion`: another monitor's token that lives as long; may be null.
    std::shared_ptr<EventMonitorToken> add(bool isLocal, Handler handler,
                                           std::shared_ptr<EventMonitorToken> companion = nullptr);
    /// As EventMonitor asks for them; null for other events than those of keys.
    std::shared_ptr<EventMonitorToken> addGlobal(quint64 eventMask, Handler handler);
    std::shared_ptr<EventMonitorToken> addLocal(quint64 eventMask, LocalHandler handler);
    /// Notifies either the local or the global monitors.
    void report(bool isDown, bool isLocal);

private:
    struct Monitor;

    std::vector<std::weak_ptr<Monitor>> m_monitors;
};

} // namespace talmo
