#include "Input/Hotkey/FnGestureRecognizer.h"

namespace talmo {

FnGestureRecognizer::DownResult FnGestureRecognizer::fnDown(Instant now)
{
    if (m_activeMode == ActiveMode::Toggle) {
        m_activeMode.reset();
        return {FnGestureSignal::Up, false};
    }
    if (m_lastReleaseTime && now - *m_lastReleaseTime <= doubleTapWindow) {
        m_lastReleaseTime.reset();
        m_awaitingHoldConfirmation = false;
        m_activeMode = ActiveMode::Toggle;
        return {FnGestureSignal::Down, false};
    }
    m_awaitingHoldConfirmation = true;
    return {std::nullopt, true};
}

std::optional<FnGestureSignal> FnGestureRecognizer::fnUp(Instant now)
{
    m_lastReleaseTime = now;
    m_awaitingHoldConfirmation = false;
    if (m_activeMode == ActiveMode::Hold) {
        m_activeMode.reset();
        return FnGestureSignal::Up;
    }
    return std::nullopt;
}

bool FnGestureRecognizer::confirmHold()
{
    if (!m_awaitingHoldConfirmation || m_activeMode) {
        return false;
    }
    m_awaitingHoldConfirmation = false;
    m_activeMode = ActiveMode::Hold;
    return true;
}

} // namespace talmo
