#pragma once

#include "Insertion/PasteReceipt.h"
#include "Insertion/Pasteboard.h"
#include "Platform/Linux/Wayland/Clipboard/WaylandPasteTransaction.h"

#include <functional>
#include <memory>

namespace talmo {

/// The clipboard of the Wayland session, by data control. Calls are carried out in order on the session's thread.
class WaylandPasteboard final : public Pasteboard, public PasteWitness {
public:
    /// `secretTime`: see WaylandPasteTransaction.
    explicit WaylandPasteboard(std::shared_ptr<WaylandSession> session,
                               std::chrono::milliseconds secretTime = WaylandPasteTransaction::longestSecretTime);
    ~WaylandPasteboard() override;

    void beginPaste() override;
    void endPaste() override;
    QFuture<QList<PasteboardItem>> items() override;
    void clearContents() override;
    void setString(const QString &text) override;
    void writeItems(const QList<PasteboardItem> &items) override;
    QFuture<void> settled() override;

    QFuture<PasteReceipt> receipt() override;
    bool holdsEarlierClipboard() const override { return m_transaction->holdsEarlier(); }
    QFuture<bool> putEarlierClipboardBack() override;

    /// Called on the session's thread if some of the clipboard's content could not be saved.
    void setOnLoss(WaylandPasteTransaction::OnLoss callback);

    /// Finishes once Talmo no longer owns the clipboard.
    QFuture<void> ownershipLost();
    /// Completes a pending restore; nothing can be pasted afterwards. Finishes within two and a half seconds.
    QFuture<void> shutDown();

    /// Shared by the paste shortcut and the clipboard; for the session's thread.
    std::shared_ptr<WaylandPasteTransaction> transaction() const { return m_transaction; }

private:
    void post(std::function<void(WaylandPasteTransaction &)> work);
    QFuture<void> when(QFuture<void> (WaylandPasteTransaction::*event)());

    std::shared_ptr<WaylandSession> m_session;
    std::shared_ptr<WaylandPasteTransaction> m_transaction;
};

} // namespace talmo
