#pragma once

#include "Base/WaitingList.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/RestorePolicy.h"
#include "Platform/Linux/Session/EarlierContent.h"
#include "Platform/Linux/X11/Clipboard/OverduePastes.h"
#include "Platform/Linux/X11/Clipboard/PrimaryLoan.h"
#include "Platform/Linux/X11/Clipboard/SecretLifetime.h"
#include "Platform/Linux/X11/Clipboard/SelectionServer.h"
#include "Platform/Linux/X11/Clipboard/SnapshotReader.h"
#include "Platform/Linux/X11/Windows/FrontWindow.h"
#include "Platform/Linux/X11/XSession.h"

#include <QCoro/QCoroTask>
#include <QTimer>

#include <memory>
#include <optional>

namespace talmo {

/// The clipboard's side of a paste: the current content, the content to restore, and when to restore it. The earlier
/// content is restored once the frontmost program has read the text; until a program has, the text stays, and a window
/// that hangs gets it when it responds again. The X session's thread only.
class PasteTransaction {
public:
    using OnLoss = SnapshotReader::OnLoss;

    explicit PasteTransaction(XSession &session, std::chrono::milliseconds secretTime = SecretLifetime::longestTime);
    ~PasteTransaction();
    PasteTransaction(const PasteTransaction &) = delete;
    PasteTransaction &operator=(const PasteTransaction &) = delete;

    void begin();
    void end();
    /// Waits for a pending restore first.
    static QCoro::Task<QList<PasteboardItem>> snapshot(std::shared_ptr<PasteTransaction> self);
    void clear();
    void setString(const QString &text);
    void writeItems(const QList<PasteboardItem> &items);

    /// Whether the shortcut is to be posted to this window; if not, the paste is settled.
    bool chooseTarget(const FrontWindow &front);
    /// Call when the shortcut has been posted to this window: from then on its reads count.
    void notePosted(const FrontWindow &target);
    /// Call if the shortcut cannot be posted.
    void refuse(PasteReceipt::Outcome outcome);

    /// The outcome of the last paste.
    QFuture<PasteReceipt> receipt();
    /// Any thread.
    bool holdsEarlier() const { return m_earlier.isHeld(); }
    /// Restores the content that was replaced by a text no program has read; false if there is none.
    bool putEarlierBack();
    /// Called if some of the clipboard's content could not be saved.
    void setOnLoss(OnLoss callback) { m_snapshots->setOnLoss(std::move(callback)); }

    /// Finishes once no restore is pending. Earlier content kept behind an unread text does not count as pending.
    QFuture<void> settled();
    /// Finishes once Talmo no longer owns the clipboard: another program has taken it, or the server is gone.
    QFuture<void> ownershipLost();
    /// Waits for a pending restore, then passes the content that Talmo owns to the desktop's clipboard manager, if
    /// there is one.
    static QCoro::Task<void> shutDown(std::shared_ptr<PasteTransaction> self);

private:
    using Content = QList<PasteboardRepresentation>;

    void handleRequest(const SelectionServer::Request &request);
    void noteLateRead(const SelectionServer::Request &request);
    quint32 readerOf(const SelectionServer::Request &request);
    void handleLost();
    void endSecret();
    void restoreIfDue();
    void conclude(PasteReceipt::Outcome outcome);
    void withhold(PasteReceipt::Outcome outcome);
    void applyRestore();
    void stand(const Content &content);
    bool isSending() const { return m_clipboard.isSending() || m_primary.server().isSending(); }

    XSession &m_session;
    SelectionServer m_clipboard;
    PrimaryLoan m_primary;
    OverduePastes m_overdue;
    SecretLifetime m_secret;
    std::shared_ptr<SnapshotReader> m_snapshots;
    EarlierContent m_earlier;

    bool m_isPasting = false;
    bool m_beginsAfterRestore = false;
    /// The text of this paste has been written; anything written after that is the content to restore.
    bool m_hasText = false;
    QString m_text;
    int m_claims = 0;
    bool m_wasLost = false;
    RestorePolicy m_policy;
    FrontWindow m_target;
    std::optional<PasteReceipt::Outcome> m_refusal;
    std::shared_ptr<Completion<PasteReceipt>> m_receipt;

    std::optional<Content> m_restore;
    QTimer m_timer;
    WaitingList m_waiting;
    WaitingList m_waitingForLoss;
};

} // namespace talmo
