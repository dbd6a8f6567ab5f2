#pragma once

#include "Platform/Linux/Session/ClipboardPaste.h"
#include "Platform/Linux/Wayland/Clipboard/OfferReader.h"
#include "Platform/Linux/Wayland/Clipboard/OwnedSelection.h"
#include "Platform/Linux/Wayland/Windows/FrontApplication.h"

#include <QCoro/QCoroTask>

#include <functional>
#include <memory>

namespace talmo {

/// A paste on Wayland, which does not say who reads: every read after the shortcut counts. The session's thread only.
class WaylandPasteTransaction final : public ClipboardPaste {
public:
    using OnLoss = std::function<void(OfferReading::Loss)>;

    /// `secretTime`: see SecretLifetime. The protocol does not tell when the program ends that copied a secret.
    WaylandPasteTransaction(std::shared_ptr<DataControl> control, FrontSource front,
                            std::chrono::milliseconds secretTime = SecretLifetime::longestTime);
    WaylandPasteTransaction(const WaylandPasteTransaction &) = delete;
    WaylandPasteTransaction &operator=(const WaylandPasteTransaction &) = delete;
    ~WaylandPasteTransaction() override = default;

    /// Waits for a pending restore first.
    static QCoro::Task<QList<PasteboardItem>> snapshot(std::shared_ptr<WaylandPasteTransaction> self);

    FrontApplication front() const { return m_front(); }
    /// The style in which to post the shortcut to this application. For one that is unknown, both selections hold the
    /// text and Shift+Insert pastes one of them everywhere.
    PasteStyle chooseStyle(const FrontApplication &front);
    /// Call once the compositor has carried out the shortcut: reads from then on count.
    void notePosted();

    /// Called if some of the clipboard's content could not be saved.
    void setOnLoss(OnLoss callback) { m_onLoss = std::move(callback); }

    /// Finishes once Talmo no longer owns the clipboard: another program has taken it, or the compositor is gone.
    QFuture<void> ownershipLost();
    void handleConnectionLost();

protected:
    Content textContent(const QString &text) const override;
    bool own(const Content &content) override;
    void disown() override { m_clipboard.disown(); }
    bool isOwner() const override { return m_clipboard.isOwner(); }
    const Content &ownContent() const override { return m_clipboard.content(); }
    bool isSending() const override { return m_clipboard.isSending() || m_primary.isSending(); }

    void forgetTarget() override;
    PasteStyle style() const override { return m_style; }
    Outcome unreadOutcome() const override { return m_target.isNone ? Outcome::NoWindow : Outcome::NotTaken; }
    bool isHopeless(Time now) const override;

    void stand(const Content &content) override;
    void giveBackPrimary() override;

private:
    static QCoro::Task<Content> readOrOwn(std::shared_ptr<WaylandPasteTransaction> self, OwnedSelection *owned,
                                          WaylandSelection selection);
    bool pastesPrimary(const FrontApplication &front) const;
    void noteRead(const OwnedSelection::Read &read);

    std::shared_ptr<DataControl> m_control;
    FrontSource m_front;
    OwnedSelection m_clipboard;
    OwnedSelection m_primary;
    OfferReader m_reader;
    OnLoss m_onLoss;

    Time m_postTime;
    Time m_readTime{};
    FrontApplication m_target;
    PasteStyle m_style = PasteStyle::ControlV;

    Content m_primarySnapshot;
    bool m_ownsPrimaryForPaste = false;
};

} // namespace talmo
