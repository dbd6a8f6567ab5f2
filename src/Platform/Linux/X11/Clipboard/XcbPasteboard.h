#pragma once

#include "Insertion/Pasteboard.h"
#include "Platform/Linux/X11/Clipboard/PasteTransaction.h"
#include "Platform/Linux/X11/XSession.h"

#include <functional>
#include <memory>

namespace talmo {

/// The clipboard of the X session. The calls are carried out on the session's thread in their order.
class XcbPasteboard final : public Pasteboard, public PasteWitness {
public:
    /// `secretTime`: see SecretLifetime.
    explicit XcbPasteboard(std::shared_ptr<XSession> session,
                           std::chrono::milliseconds secretTime = SecretLifetime::longestTime);
    ~XcbPasteboard() override;

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

    /// Called on the session's thread when something that stood on the clipboard could not be saved.
    void setOnLoss(PasteTransaction::OnLoss callback);

    /// Finishes once nothing of Talmo's stands on the clipboard: another program has taken it, or the server is gone.
    QFuture<void> relieved();

    /// Completes a pending restore and hands the clipboard on; nothing is pasted after it. Finishes within two and a
    /// half seconds.
    QFuture<void> shutDown();

    /// What the chord and the clipboard share; for the session's thread.
    std::shared_ptr<PasteTransaction> transaction() const { return m_transaction; }

private:
    void post(std::function<void(PasteTransaction &)> work);
    QFuture<void> when(QFuture<void> (PasteTransaction::*event)());

    std::shared_ptr<XSession> m_session;
    std::shared_ptr<PasteTransaction> m_transaction;
};

} // namespace talmo
