#pragma once

#include "Platform/Linux/Session/ClipboardPaste.h"
#include "Platform/Linux/X11/Clipboard/OverduePastes.h"
#include "Platform/Linux/X11/Clipboard/PrimaryLoan.h"
#include "Platform/Linux/X11/Clipboard/SelectionServer.h"
#include "Platform/Linux/X11/Clipboard/SnapshotReader.h"
#include "Platform/Linux/X11/Windows/FrontWindow.h"
#include "Platform/Linux/X11/XSession.h"

#include <QCoro/QCoroTask>

#include <functional>
#include <map>
#include <memory>

namespace talmo {

/// A paste into a window of X. Its client is known, so only its reads count, and a window that hangs gets the text when
/// it responds again. The X session's thread only.
class PasteTransaction final : public ClipboardPaste {
public:
    using OnLoss = SnapshotReader::OnLoss;

    explicit PasteTransaction(XSession &session, std::chrono::milliseconds secretTime = SecretLifetime::longestTime);
    ~PasteTransaction() override;
    PasteTransaction(const PasteTransaction &) = delete;
    PasteTransaction &operator=(const PasteTransaction &) = delete;

    /// Waits for a pending restore first.
    static QCoro::Task<QList<PasteboardItem>> snapshot(std::shared_ptr<PasteTransaction> self);

    /// Whether the shortcut is to be posted to this window; if not, the paste is settled.
    bool chooseTarget(const FrontWindow &front);
    /// Whether a window beyond the server would paste the primary selection; empty: none does. Set before the first
    /// paste.
    void setPastesPrimaryBeyond(std::function<bool()> answer) { m_pastesPrimaryBeyond = std::move(answer); }
    /// Whether the compositor, this client, has learnt of the text and had a moment to offer it to its own windows. A
    /// shortcut before that pastes what was on the clipboard earlier, or nothing.
    bool isOfferedBy(quint32 compositor) const;
    /// Call when the shortcut has been posted to this window: from then on its reads count.
    void notePosted(const FrontWindow &target);

    /// Called if some of the clipboard's content could not be saved.
    void setOnLoss(OnLoss callback) { m_snapshots->setOnLoss(std::move(callback)); }

    /// Finishes once Talmo no longer owns the clipboard: another program has taken it, or the server is gone.
    QFuture<void> ownershipLost();
    /// Waits for a pending restore, then passes the content that Talmo owns to the desktop's clipboard manager, if
    /// there is one.
    static QCoro::Task<void> shutDown(std::shared_ptr<PasteTransaction> self);

protected:
    Content textContent(const QString &text) const override { return textRepresentations(text); }
    bool own(const Content &content) override;
    void disown() override { m_clipboard.disown(); }
    bool isOwner() const override { return m_clipboard.isOwner(); }
    const Content &ownContent() const override { return m_clipboard.content(); }
    bool isSending() const override { return m_clipboard.isSending() || m_primary.server().isSending(); }

    void forgetTarget() override { m_target = {}; }
    PasteStyle style() const override { return m_target.style; }
    Outcome unreadOutcome() const override;
    Time awaitRead(Time now, Time next) override;
    void leaveTarget() override { m_overdue.stopAsking(m_target); }
    void handleWithheld(Outcome outcome) override;

    void stand(const Content &content) override;
    void giveBackPrimary() override { m_primary.giveBack(); }
    void handleTaken() override { m_overdue.clear(); }

private:
    /// When each client first asked for a selection.
    using Askers = std::map<quint32, Time>;

    bool pastesPrimary() const;
    void handleRequest(const SelectionServer::Request &request);
    void noteLateRead(const SelectionServer::Request &request);
    quint32 readerOf(const SelectionServer::Request &request);

    XSession &m_session;
    std::function<bool()> m_pastesPrimaryBeyond;
    SelectionServer m_clipboard;
    PrimaryLoan m_primary;
    OverduePastes m_overdue;
    std::shared_ptr<SnapshotReader> m_snapshots;
    FrontWindow m_target;
    Askers m_clipboardAskers;
    Askers m_primaryAskers;
};

} // namespace talmo
