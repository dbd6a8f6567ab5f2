#include "UI/Accessibility/AnnouncingOverlay.h"

#include "UI/Overlay/RecordingOverlay.h"
#include "UI/Style/Wording.h"

#include <utility>

namespace talmo {

AnnouncingOverlay::AnnouncingOverlay(std::shared_ptr<OverlayService> overlay, const TalmoCoordinator &coordinator,
                                     std::shared_ptr<DictationNotice> notice, Announce announce)
    : m_overlay(std::move(overlay)),
      m_coordinator(coordinator),
      m_notice(std::move(notice)),
      m_announce(std::move(announce)),
      m_state(coordinator.state())
{
    // Queued: changes are announced before they are stored.
    QObject::connect(
        m_notice.get(), &Observable::objectWillChange, &m_receiver, [this] { announceNotice(); }, Qt::QueuedConnection);
}

/// Called once for every state that is entered, even for an error that equals the one before.
void AnnouncingOverlay::show()
{
    m_overlay->show();
    m_state = m_coordinator.state();
    const auto contents = OverlayContents::make(m_state, {});
    m_announce(m_state.is(TalmoState::Case::Error) ? contents.detail : contents.title);
}

void AnnouncingOverlay::hide()
{
    const QString farewell = m_notice->farewell();
    m_overlay->hide();
    const auto before = std::exchange(m_state, m_coordinator.state());
    if (!m_state.is(TalmoState::Case::Idle)) {
        return; // Only the card of the error is hidden; the error remains.
    }
    if (before.is(TalmoState::Case::Inserting)) {
        m_announce(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Inserted")));
    } else if (!farewell.isEmpty()) {
        m_announce(Wording::text(farewell));
    }
}

void AnnouncingOverlay::announceNotice()
{
    const QString text = m_notice->text();
    if (std::exchange(m_announcedNotice, text) != text && !text.isEmpty()) {
        m_announce(Wording::text(text));
    }
}

} // namespace talmo
