#pragma once

#include "Insertion/Pasteboard.h"
#include "Platform/Linux/X11/Clipboard/PasteTransaction.h"
#include "Platform/Linux/X11/XSession.h"

#include <functional>
#include <memory>

namespace talmo {

/// The clipboard of the X session. Calls are carried out in order on the session's thread.
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

    /// Called on the session's thread if some of the clipboard's content could not be saved.
    void setOnLoss(PasteTransaction::OnLoss callback);

    /// Finishes once Talmo no longer owns the clipboard: another program has taken it, or the server is gone.
    QFuture<void> ownershipLost();

    /// Completes a pending restore and passes the clipboard on; nothing can be pasted afterwards. Finishes within two
    /// and a half seconds.
    QFuture<void> shutDown();

    /// Shared by the paste shortcut and the clipboard; for the session's thread.
    std::shared_ptr<PasteTransaction> transaction() const { return m_transaction; }

private:
    void post(std::function<void(PasteTransaction &)> work);
    QFuture<void> when(QFuture<void> (PasteTransaction::*event)());

    std::shared_ptr<XSession> m_session;
    std::shared_ptr<PasteTransaction> m_transaction;
};

} // namespace talmo
