#include "Input/Hotkey/CommandedEventMonitor.h"

#include <utility>

namespace talmo {

CommandedEventMonitor::CommandedEventMonitor(std::shared_ptr<EventMonitor> monitor)
    : m_monitor(std::move(monitor))
{
}

std::shared_ptr<EventMonitorToken>
CommandedEventMonitor::addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler)
{
    // The keyboard's may be missing, or not needed twice.
    auto inner = m_monitor ? m_monitor->addGlobalMonitor(eventMask, handler) : nullptr;
    return m_monitors.add(false, std::move(handler), std::move(inner));
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
    m_monitors.report(true, false);
}

void CommandedEventMonitor::release()
{
    m_isHeld = false;
    m_monitors.report(false, false);
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

} // namespace talmo
