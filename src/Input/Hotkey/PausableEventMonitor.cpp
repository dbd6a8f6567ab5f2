#include "Input/Hotkey/PausableEventMonitor.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"

#include <utility>

namespace talmo {

namespace {

/// A release is always passed on: without a press it changes nothing, and one that follows a press must not be lost.
bool isPress(const FlagsChangedEvent &event)
{
    return (event.modifierFlags & GlobalHotkeyManager::functionFlag) != 0;
}

} // namespace

PausableEventMonitor::PausableEventMonitor(std::shared_ptr<EventMonitor> monitor, std::function<bool()> isPaused)
    : m_monitor(std::move(monitor)),
      m_isPaused(std::move(isPaused))
{
}

std::shared_ptr<EventMonitorToken>
PausableEventMonitor::addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler)
{
    return m_monitor->addGlobalMonitor(
        eventMask, [isPaused = m_isPaused, handler = std::move(handler)](const FlagsChangedEvent &event) {
            if (!isPress(event) || !isPaused()) {
                handler(event);
            }
        });
}

std::shared_ptr<EventMonitorToken> PausableEventMonitor::addLocalMonitor(
    quint64 eventMask, std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler)
{
    return m_monitor->addLocalMonitor(
        eventMask, [isPaused = m_isPaused, handler = std::move(handler)](const FlagsChangedEvent &event) {
            return isPress(event) && isPaused() ? std::optional(event) : handler(event);
        });
}

} // namespace talmo
