#include "Input/Hotkey/CommandedEventMonitor.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"

#include <utility>

namespace talmo {

struct CommandedEventMonitor::Monitor final : EventMonitorToken {
    std::function<void(const FlagsChangedEvent &)> handler;
    /// The keyboard's; null if it could not be installed, or is not needed twice.
    std::shared_ptr<EventMonitorToken> inner;
};

CommandedEventMonitor::CommandedEventMonitor(std::shared_ptr<EventMonitor> monitor)
    : m_monitor(std::move(monitor))
{
}

std::shared_ptr<EventMonitorToken>
CommandedEventMonitor::addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler)
{
    const auto monitor = std::make_shared<Monitor>();
    monitor->inner = m_monitor ? m_monitor->addGlobalMonitor(eventMask, handler) : nullptr;
    monitor->handler = std::move(handler);
    m_monitors.emplace_back(monitor);
    return monitor;
}

/// Commands come from other programs, so they reach the global monitors only.
std::shared_ptr<EventMonitorToken> CommandedEventMonitor::addLocalMonitor(
    quint64 eventMask, std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    return m_monitor ? m_monitor->addLocalMonitor(eventMask, std::move(handler)) : nullptr;
}

void CommandedEventMonitor::press()
{
    if (m_isHeld) {
        release();
    }
    m_isHeld = true;
    report(true);
}

void CommandedEventMonitor::release()
{
    m_isHeld = false;
    report(false);
}

void CommandedEventMonitor::toggle(const std::function<bool()> &isRecording)
{
    const bool wasRecording = isRecording();
    press();
    release();
    // One tap may have been enough: it was the second of two if the last toggle ended a moment ago.
    if (!wasRecording && !isRecording()) {
        press();
        release();
    }
}

void CommandedEventMonitor::report(bool isDown)
{
    std::erase_if(m_monitors, [](const auto &monitor) { return monitor.expired(); });
    const auto monitors = m_monitors; // A handler may add one.
    for (const auto &weak : monitors) {
        if (const auto monitor = weak.lock()) {
            monitor->handler({isDown ? GlobalHotkeyManager::functionFlag : 0});
        }
    }
}

} // namespace talmo
