#include "App/DeferringHotkeyService.h"

#include "Base/Log.h"
#include "Base/Task.h"

#include <utility>

namespace talmo {

DeferringHotkeyService::DeferringHotkeyService(Parts parts)
    : m_parts(std::move(parts))
{
}

void DeferringHotkeyService::follow(TalmoCoordinator &coordinator)
{
    m_coordinator = &coordinator;
    // Queued: changes are announced before they are stored.
    connect(&coordinator, &Observable::objectWillChange, this, [this] { stateMayHaveChanged(); }, Qt::QueuedConnection);
}

void DeferringHotkeyService::start()
{
    const QPointer<DeferringHotkeyService> self(this);
    m_parts.keys->setOnHotkeyDown([self] {
        if (self) {
            self->gestureBegan();
        }
    });
    m_parts.keys->setOnHotkeyUp([self] {
        if (self) {
            self->gestureEnded();
        }
    });
    m_parts.keys->start();
}

bool DeferringHotkeyService::isBusy() const
{
    return m_coordinator && (m_coordinator->state().is(TalmoState::Case::Processing) ||
                             m_coordinator->state().is(TalmoState::Case::Inserting));
}

bool DeferringHotkeyService::isGestureActive() const
{
    return m_wait != Wait::None || (m_coordinator && m_coordinator->state().is(TalmoState::Case::Recording));
}

void DeferringHotkeyService::beginGesture()
{
    if (!m_isClosed && !m_finished && m_wait == Wait::None && isBusy()) {
        m_parts.preroll->begin();
    }
    gestureBegan();
}

void DeferringHotkeyService::gestureBegan()
{
    if (m_isClosed || m_finished) {
        return;
    }
    m_isOver = false;
    if (m_wait != Wait::None) {
        m_parts.preroll->resume(); // The previous gesture is over, but not recorded yet: one recording covers both.
    } else if (isBusy()) {
        beginWaiting();
    } else {
        beginDictation();
    }
}

void DeferringHotkeyService::gestureEnded()
{
    if (m_isClosed || m_finished) {
        return;
    }
    if (m_wait != Wait::None) {
        m_isOver = true;
        m_parts.preroll->pause();
    } else if (m_onHotkeyUp) {
        m_onHotkeyUp();
    }
}

void DeferringHotkeyService::beginWaiting()
{
    generalLog().debug("the recording is deferred until the last sentence is done", {});
    setWait(Wait::ForLastSentence);
    if (m_insertingSince && m_parts.clock->now() - *m_insertingSince >= noticeDelay) {
        announceWait(); // Hurrying cannot help a stuck insertion.
        return;
    }
    m_announcement = std::stop_source();
    logEscapes(announceLater(this, m_parts.clock, m_announcement.get_token()));
}

void DeferringHotkeyService::beginDictation()
{
    const bool isRecording = m_coordinator && m_coordinator->state().is(TalmoState::Case::Recording);
    if (m_onHotkeyDown) {
        m_onHotkeyDown();
    }
    if (isRecording || !m_coordinator) {
        setWait(Wait::None);
    } else if (m_coordinator->lastError()) {
        setWait(Wait::None);
        m_parts.preroll->close(); // Refused immediately.
    } else {
        setWait(Wait::ForRecording);
    }
}

void DeferringHotkeyService::setWait(Wait wait)
{
    if (wait != Wait::ForLastSentence) {
        m_announcement.request_stop();
        m_parts.notice->clear();
    }
    m_wait = wait;
    m_parts.cleanup->setHurried(wait == Wait::ForLastSentence || m_finished);
}

void DeferringHotkeyService::stateMayHaveChanged()
{
    if (!m_coordinator) {
        return;
    }
    const TalmoState &state = m_coordinator->state();
    if (!state.is(TalmoState::Case::Inserting)) {
        m_insertingSince.reset();
    } else if (!m_insertingSince) {
        m_insertingSince = m_parts.clock->now();
    }
    if (m_wait == Wait::ForLastSentence && !isBusy()) {
        beginDictation();
    } else if (m_wait == Wait::ForRecording && (state.is(TalmoState::Case::Recording) || isBusy())) {
        recordingStarted();
    } else if (m_wait == Wait::ForRecording && m_coordinator->lastError()) {
        setWait(Wait::None);
        m_parts.preroll->close();
    }
    finishIfDone();
}

void DeferringHotkeyService::recordingStarted()
{
    setWait(Wait::None);
    if (std::exchange(m_isOver, false) && m_onHotkeyUp) {
        m_onHotkeyUp();
    }
}

void DeferringHotkeyService::announceWait()
{
    m_parts.notice->show(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Still working on the last sentence")));
}

QCoro::Task<void> DeferringHotkeyService::announceLater(QPointer<DeferringHotkeyService> self,
                                                        std::shared_ptr<Clock> clock, std::stop_token stop)
{
    const auto delay = clock->sleep(noticeDelay, stop);
    try {
        co_await delay;
    } catch (...) { // NOLINT(bugprone-empty-catch): the check below decides.
    }
    if (self && !stop.stop_requested() && self->m_wait == Wait::ForLastSentence) {
        self->announceWait();
    }
}

QFuture<bool> DeferringHotkeyService::finishDictation(Duration longest)
{
    if (m_finished) {
        return m_finished->future();
    }
    m_finished = Completion<bool>::make();
    const auto future = m_finished->future();
    m_parts.cleanup->setHurried(true);
    if (m_wait != Wait::None) {
        m_isOver = true;
        m_parts.preroll->pause();
    } else if (isGestureActive() && m_onHotkeyUp) {
        m_onHotkeyUp();
    }
    m_finishingTimeout = std::stop_source();
    logEscapes(giveUpLater(this, m_parts.clock, longest, m_finishingTimeout.get_token()));
    // In a later event-loop iteration, as after every change.
    QMetaObject::invokeMethod(this, [this] { finishIfDone(); }, Qt::QueuedConnection);
    return future;
}

QCoro::Task<void> DeferringHotkeyService::giveUpLater(QPointer<DeferringHotkeyService> self,
                                                      std::shared_ptr<Clock> clock, Duration longest,
                                                      std::stop_token stop)
{
    const auto waiting = clock->sleep(longest, stop);
    try {
        co_await waiting;
    } catch (...) { // NOLINT(bugprone-empty-catch): the check below decides.
    }
    if (self && !stop.stop_requested()) {
        self->endFinishing(false);
    }
}

void DeferringHotkeyService::finishIfDone()
{
    if (!isBusy() && !isGestureActive()) {
        endFinishing(true);
    }
}

/// The key works again afterwards: the end of the session may have been cancelled.
void DeferringHotkeyService::endFinishing(bool isDone)
{
    if (const auto finished = std::exchange(m_finished, nullptr)) {
        m_finishingTimeout.request_stop();
        setWait(m_wait);
        finished->finish(isDone);
    }
}

} // namespace talmo
