#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// A change of the modifier keys, with the new state of all of them.
struct FlagsChangedEvent {
    quint64 modifierFlags = 0;
    bool operator==(const FlagsChangedEvent &) const = default;
};

/// Keeps a monitor installed; opaque to its holder.
class EventMonitorToken {
public:
    virtual ~EventMonitorToken() = default;
};

/// Monitors the keyboard of the whole session. Main thread; handlers run there, synchronously, one event at a time,
/// until the EventMonitor is destroyed. An event reaches exactly one of the two monitors, and neither can swallow it.
class EventMonitor {
public:
    virtual ~EventMonitor() = default;

    /// Events for other applications. Null if the monitor could not be installed.
    virtual std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) = 0;

    /// Events while this application is active; the handler returns the event to deliver.
    virtual std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) = 0;
};

} // namespace talmo
