#include "App/PressPreparation.h"

#include "Base/Task.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"

#include <utility>

namespace talmo {

PressPreparation::PressPreparation(Parts parts)
    : m_parts(std::move(parts))
{
}

void PressPreparation::start()
{
    const QPointer<PressPreparation> self(this);
    const auto handle = [self](const FlagsChangedEvent &event) {
        if (self) {
            self->handleFlagsChanged(event);
        }
        return std::optional(event);
    };
    m_monitors = {m_parts.keys->addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, handle),
                  m_parts.keys->addLocalMonitor(GlobalHotkeyManager::flagsChangedMask, handle)};
}

void PressPreparation::handleFlagsChanged(const FlagsChangedEvent &event)
{
    const bool isDown = (event.modifierFlags & GlobalHotkeyManager::functionFlag) != 0;
    if (std::exchange(m_isDown, isDown) == isDown) {
        return; // Another modifier changed.
    }
    if (isDown) {
        pressed();
    } else {
        released();
    }
}

void PressPreparation::pressed()
{
    if (m_parts.gestures->isGestureActive()) {
        return;
    }
    m_isPreparing = true;
    m_closing.request_stop();
    m_parts.preroll->begin();
    m_parts.warmUp();
}

void PressPreparation::released()
{
    if (!std::exchange(m_isPreparing, false) || m_parts.gestures->isGestureActive()) {
        return;
    }
    m_parts.preroll->discard();
    m_closing = std::stop_source();
    logEscapes(closeLater(this, m_parts.clock, m_closing.get_token()));
}

QCoro::Task<void> PressPreparation::closeLater(QPointer<PressPreparation> self, std::shared_ptr<Clock> clock,
                                               std::stop_token stop)
{
    const auto waiting = clock->sleep(readyTime, stop);
    try {
        co_await waiting;
    } catch (...) { // NOLINT(bugprone-empty-catch): the check below decides.
    }
    if (self && !stop.stop_requested()) {
        self->m_parts.preroll->close();
    }
}

} // namespace talmo
