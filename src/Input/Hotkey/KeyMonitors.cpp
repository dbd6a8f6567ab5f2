#include "Input/Hotkey/KeyMonitors.h"

#include "Input/Hotkey/GlobalHotkeyManager.h"

#include <utility>

namespace talmo {

struct KeyMonitors::Monitor final : EventMonitorToken {
    bool isLocal = false;
    Handler handler;
    std::shared_ptr<EventMonitorToken> companion;
};

std::shared_ptr<EventMonitorToken> KeyMonitors::add(bool isLocal, Handler handler,
                                                    std::shared_ptr<EventMonitorToken> companion)
{
    const auto monitor = std::make_shared<Monitor>();
    monitor->isLocal = isLocal;
    monitor->handler = std::move(handler);
    monitor->companion = std::move(companion);
    m_monitors.emplace_back(monitor);
    return monitor;
}

std::shared_ptr<EventMonitorToken> KeyMonitors::addGlobal(quint64 eventMask, Handler handler)
{
    return eventMask == GlobalHotkeyManager::flagsChangedMask ? add(false, std::move(handler)) : nullptr;
}

std::shared_ptr<EventMonitorToken> KeyMonitors::addLocal(quint64 eventMask, LocalHandler handler)
{
    return eventMask == GlobalHotkeyManager::flagsChangedMask
               ? add(true, [handler = std::move(handler)](const FlagsChangedEvent &event) { handler(event); })
               : nullptr;
}

void KeyMonitors::report(bool isDown, bool isLocal)
{
    std::erase_if(m_monitors, [](const auto &monitor) { return monitor.expired(); });
    const auto monitors = m_monitors; // A handler may add one.
    for (const auto &weak : monitors) {
        const auto monitor = weak.lock();
        if (monitor && monitor->isLocal == isLocal) {
            monitor->handler({isDown ? GlobalHotkeyManager::functionFlag : 0});
        }
    }
}

} // namespace talmo
