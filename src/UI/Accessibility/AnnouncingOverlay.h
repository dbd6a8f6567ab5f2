#pragma once

#include "App/DictationNotice.h"
#include "App/TalmoCoordinator.h"

#include <QObject>

#include <functional>
#include <memory>

namespace talmo {

/// Announces the overlay to users who do not see it: every state once, when it is entered, but not the words of the
/// live transcript. Main thread.
class AnnouncingOverlay final : public OverlayService {
public:
    using Announce = std::function<void(const QString &text)>;

    /// The coordinator outlives this.
    AnnouncingOverlay(std::shared_ptr<OverlayService> overlay, const TalmoCoordinator &coordinator,
                      std::shared_ptr<DictationNotice> notice, Announce announce);

    void show() override;
    void hide() override;

private:
    void announceNotice();

    std::shared_ptr<OverlayService> m_overlay;
    const TalmoCoordinator &m_coordinator;
    std::shared_ptr<DictationNotice> m_notice;
    Announce m_announce;
    TalmoState m_state;
    QString m_announcedNotice;
    QObject m_receiver; ///< Disconnects from the notice when this is destroyed.
};

} // namespace talmo
