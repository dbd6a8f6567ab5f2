#include "App/LingeringOverlay.h"

#include "Base/Task.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

LingeringOverlay::LingeringOverlay(std::shared_ptr<OverlayService> overlay, std::shared_ptr<DictationNotice> notice,
                                   std::shared_ptr<Clock> clock)
    : m_overlay(std::move(overlay)),
      m_notice(std::move(notice)),
      m_clock(std::move(clock))
{
}

LingeringOverlay::~LingeringOverlay()
{
    m_lingering.request_stop();
}

void LingeringOverlay::show()
{
    m_lingering.request_stop();
    m_notice->setFarewell({});
    m_overlay->show();
}

void LingeringOverlay::hide()
{
    m_lingering.request_stop();
    if (m_notice->farewell().isEmpty()) {
        m_overlay->hide();
        return;
    }
    m_overlay->show(); // The card takes the size of its last word.
    m_lingering = std::stop_source();
    const auto time = m_clock->sleep(readingTime, m_lingering.get_token());
    logEscapes(hideLater(m_overlay, m_notice, time, m_lingering.get_token()));
}

QCoro::Task<void> LingeringOverlay::hideLater(std::weak_ptr<OverlayService> overlay,
                                              std::shared_ptr<DictationNotice> notice, QFuture<void> time,
                                              std::stop_token stop)
{
    try {
        co_await time;
    } catch (...) { // NOLINT(bugprone-empty-catch): the check below decides.
    }
    const auto shown = overlay.lock();
    if (shown && !stop.stop_requested()) {
        notice->setFarewell({});
        shown->hide();
    }
}

} // namespace talmo
