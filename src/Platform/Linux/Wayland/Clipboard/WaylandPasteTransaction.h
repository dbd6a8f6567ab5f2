#pragma once

#include "Base/WaitingList.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/PasteStyle.h"
#include "Insertion/RestorePolicy.h"
#include "Platform/Linux/Session/EarlierContent.h"
#include "Platform/Linux/Wayland/Clipboard/OfferReader.h"
#include "Platform/Linux/Wayland/Clipboard/OwnedSelection.h"
#include "Platform/Linux/Wayland/Windows/FrontApplication.h"

#include <QCoro/QCoroTask>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// The clipboard's side of a paste: the current content, the content to restore, and when to restore it. Wayland does
/// not say who reads, so every read after the shortcut counts. The session's thread only.
class WaylandPasteTransaction {
public:
    using OnLoss = std::function<void(OfferReading::Loss)>;

    static constexpr std::chrono::minutes longestSecretTime{1};

    /// `secretTime`: how long a password that Talmo restored stays; its own program can no longer remove it.
    WaylandPasteTransaction(std::shared_ptr<DataControl> control, FrontSource front,
                            std::chrono::milliseconds secretTime = longestSecretTime);
    WaylandPasteTransaction(const WaylandPasteTransaction &) = delete;
    WaylandPasteTransaction &operator=(const WaylandPasteTransaction &) = delete;

    void begin();
    void end();
    /// Waits for a pending restore first.
    static QCoro::Task<QList<PasteboardItem>> snapshot(std::shared_ptr<WaylandPasteTransaction> self);
    void clear();
    void setString(const QString &text);
    void writeItems(const QList<PasteboardItem> &items);

    FrontApplication front() const { return m_front(); }
    /// The style in which to post the shortcut to this application. For one that is unknown, both selections hold the
    /// text and Shift+Insert pastes one of them everywhere.
    PasteStyle chooseStyle(const FrontApplication &front);
    /// Call once the compositor has carried out the shortcut: reads from then on count.
    void notePosted();
    /// Call if the shortcut cannot be posted.
    void refuse(PasteReceipt::Outcome outcome);

    /// The outcome of the last paste.
    QFuture<PasteReceipt> receipt();
    /// Any thread.
    bool holdsEarlier() const { return m_earlier.isHeld(); }
    /// Restores the content that was replaced by a text no program has read; false if there is none.
    bool putEarlierBack();
    /// Called if some of the clipboard's content could not be saved.
    void setOnLoss(OnLoss callback) { m_onLoss = std::move(callback); }

    /// Finishes once no restore is pending.
    QFuture<void> settled();
    /// Finishes once Talmo no longer owns the clipboard: another program has taken it, or the compositor is gone.
    QFuture<void> ownershipLost();
    void handleConnectionLost();

private:
    using Content = QList<PasteboardRepresentation>;
    using Outcome = PasteReceipt::Outcome;

    static QCoro::Task<Content> readOrOwn(std::shared_ptr<WaylandPasteTransaction> self, OwnedSelection *owned,
                                          WaylandSelection selection);
    bool pastesPrimary(const FrontApplication &front) const;
    void handleRead(const OwnedSelection::Read &read);
    void handleLost();
    void endSecret();
    void evaluate();
    void conclude(Outcome outcome);
    void withhold(Outcome outcome);
    void applyRestore();
    void stand(const Content &content);
    void standPrimary();
    bool isSending() const { return m_clipboard.isSending() || m_primary.isSending(); }

    std::shared_ptr<DataControl> m_control;
    FrontSource m_front;
    OwnedSelection m_clipboard;
    OwnedSelection m_primary;
    OfferReader m_reader;
    OnLoss m_onLoss;

    bool m_isPasting = false;
    bool m_beginsAfterRestore = false;
    /// The text of this paste has been written; anything written after that is the content to restore.
    bool m_hasText = false;
    RestorePolicy::Time m_textTime;
    QString m_text;
    int m_claims = 0;
    bool m_wasLost = false;
    RestorePolicy m_policy;
    RestorePolicy::Time m_postTime;
    RestorePolicy::Time m_readTime{};
    FrontApplication m_target;
    PasteStyle m_style = PasteStyle::ControlV;
    std::optional<Outcome> m_refusal;
    std::shared_ptr<Completion<PasteReceipt>> m_receipt;

    Content m_primarySnapshot;
    bool m_ownsPrimaryForPaste = false;

    std::optional<Content> m_restore;
    EarlierContent m_earlier;
    QTimer m_timer;
    QTimer m_secretTimer;
    WaitingList m_waiting;
    WaitingList m_waitingForLoss;
};

} // namespace talmo
