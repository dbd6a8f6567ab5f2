#include "Input/Hotkey/GlobalHotkeyManager.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <utility>

namespace talmo {

GlobalHotkeyManager::GlobalHotkeyManager(std::shared_ptr<EventMonitor> eventMonitor,
                                         std::shared_ptr<InputTrust> inputTrust, std::shared_ptr<Clock> clock,
                                         std::shared_ptr<SerialExecutor> mainExecutor)
    : m_eventMonitor(std::move(eventMonitor)),
      m_inputTrust(std::move(inputTrust)),
      m_clock(std::move(clock)),
      m_mainExecutor(std::move(mainExecutor))
{
}

void GlobalHotkeyManager::start()
{
    if (m_isActive) {
        return;
    }
    m_isActive = true;
    const QPointer<GlobalHotkeyManager> self(this);
    const auto global = m_eventMonitor->addGlobalMonitor(flagsChangedMask, [self](const FlagsChangedEvent &event) {
        if (self) {
            self->handleFlagsChanged(event);
        }
    });
    const auto local = m_eventMonitor->addLocalMonitor(flagsChangedMask, [self](const FlagsChangedEvent &event) {
        if (self) {
            self->handleFlagsChanged(event);
        }
        return std::optional(event);
    });
    for (const auto &token : {global, local}) {
        if (token) {
            m_monitors.push_back(token);
        }
    }
    hotkeyLog().debug("start(): globalMonitor=%{bool}d localMonitor=%{bool}d accessibilityTrusted=%{bool}d",
                      {global != nullptr, local != nullptr, m_inputTrust->isTrusted()});
}

void GlobalHotkeyManager::handleFlagsChanged(const FlagsChangedEvent &event)
{
    const bool isFnSet = (event.modifierFlags & functionFlag) != 0;
    hotkeyLog().debug("flagsChanged raw=%lu function=%{bool}d isFnDown=%{bool}d",
                      {event.modifierFlags, isFnSet, m_isFnDown});
    if (isFnSet == m_isFnDown) {
        return; // Another modifier changed.
    }
    m_isFnDown = isFnSet;
    if (isFnSet) {
        handlePress();
    } else {
        handleRelease();
    }
}

void GlobalHotkeyManager::handlePress()
{
    const auto result = m_recognizer.fnDown(m_clock->now());
    deliver(result.signal);
    if (result.needsHoldConfirmation) {
        scheduleHoldConfirmation();
    }
}

void GlobalHotkeyManager::handleRelease()
{
    m_holdConfirmationTask.cancel();
    m_holdConfirmationTask = {};
    deliver(m_recognizer.fnUp(m_clock->now()));
}

void GlobalHotkeyManager::endGesture()
{
    m_holdConfirmationTask.cancel();
    m_holdConfirmationTask = {};
    m_recognizer = FnGestureRecognizer();
}

void GlobalHotkeyManager::scheduleHoldConfirmation()
{
    m_holdConfirmationTask.cancel();
    m_holdConfirmationTask =
        launch(*m_mainExecutor, [self = QPointer<GlobalHotkeyManager>(this), clock = m_clock](std::stop_token stop) {
            return confirmHoldLater(self, clock, stop);
        });
}

QCoro::Task<void> GlobalHotkeyManager::confirmHoldLater(QPointer<GlobalHotkeyManager> self,
                                                        std::shared_ptr<Clock> clock, std::stop_token stop)
{
    if (!self) {
        co_return;
    }
    try {
        co_await clock->sleep(FnGestureRecognizer::holdThreshold, stop);
    } catch (...) { // NOLINT(bugprone-empty-catch): the checks below decide, without a timer too.
    }
    if (stop.stop_requested() || !self) {
        co_return;
    }
    if (self->m_isFnDown && self->m_recognizer.confirmHold()) {
        self->deliver(FnGestureSignal::Down);
    }
}

void GlobalHotkeyManager::deliver(std::optional<FnGestureSignal> signal)
{
    if (signal == FnGestureSignal::Down && m_onHotkeyDown) {
        m_onHotkeyDown();
    } else if (signal == FnGestureSignal::Up && m_onHotkeyUp) {
        m_onHotkeyUp();
    }
}

} // namespace talmo
