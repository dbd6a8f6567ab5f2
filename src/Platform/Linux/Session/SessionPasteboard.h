#pragma once

#include "Base/Completion.h"
#include "Base/SerialExecutor.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/Pasteboard.h"

#include <functional>
#include <memory>
#include <utility>

namespace talmo {

/// A pasteboard whose pastes are transactions on the thread of a session: carries the calls there, in order. Made and
/// destroyed by its subclass, which knows how to make a transaction.
template <typename Session, typename Transaction>
class SessionPasteboard : public Pasteboard, public PasteWitness {
public:
    SessionPasteboard(const SessionPasteboard &) = delete;
    SessionPasteboard &operator=(const SessionPasteboard &) = delete;
    ~SessionPasteboard() override
    {
        // Its timers live on the session's thread and must be destroyed there.
        m_session->executor()
            .call([transaction = std::move(m_transaction)]() mutable { transaction.reset(); })
            .waitForFinished();
    }

    void beginPaste() override
    {
        post([](Transaction &transaction) { transaction.begin(); });
    }
    void endPaste() override
    {
        post([](Transaction &transaction) { transaction.end(); });
    }
    QFuture<QList<PasteboardItem>> items() override
    {
        return m_session->executor().template run<QList<PasteboardItem>>(
            [transaction = m_transaction] { return Transaction::snapshot(transaction); });
    }
    void clearContents() override
    {
        post([](Transaction &transaction) { transaction.clear(); });
    }
    void setString(const QString &text) override
    {
        post([text](Transaction &transaction) { transaction.setString(text); });
    }
    void writeItems(const QList<PasteboardItem> &items) override
    {
        post([items](Transaction &transaction) { transaction.writeItems(items); });
    }
    QFuture<void> settled() override { return when(&Transaction::settled); }

    QFuture<PasteReceipt> receipt() override
    {
        auto completion = Completion<PasteReceipt>::make();
        auto future = completion->future();
        post([completion](Transaction &transaction) {
            transaction.receipt().then([completion](const PasteReceipt &receipt) { completion->finish(receipt); });
        });
        return future;
    }
    bool holdsEarlierClipboard() const override { return m_transaction->holdsEarlier(); }
    QFuture<bool> putEarlierClipboardBack() override
    {
        return m_session->executor().call([transaction = m_transaction] { return transaction->putEarlierBack(); });
    }

    /// Called on the session's thread if some of the clipboard's content could not be saved.
    void setOnLoss(typename Transaction::OnLoss callback)
    {
        post([callback = std::move(callback)](Transaction &transaction) { transaction.setOnLoss(callback); });
    }
    /// Finishes once Talmo no longer owns the clipboard: another program has taken it, or the server is gone.
    QFuture<void> ownershipLost() { return when(&Transaction::ownershipLost); }

    /// Shared by the paste shortcut and the clipboard; for the session's thread.
    std::shared_ptr<Transaction> transaction() const { return m_transaction; }

protected:
    SessionPasteboard(std::shared_ptr<Session> session,
                      const std::function<std::shared_ptr<Transaction>(Session &)> &make)
        : m_session(std::move(session)),
          m_transaction(m_session->executor().call([this, &make] { return make(*m_session); }).result())
    {
    }
    const std::shared_ptr<Session> &session() const { return m_session; }

private:
    void post(std::function<void(Transaction &)> work)
    {
        m_session->executor().post([transaction = m_transaction, work = std::move(work)] { work(*transaction); });
    }
    QFuture<void> when(QFuture<void> (Transaction::*event)())
    {
        auto completion = Completion<void>::make();
        auto future = completion->future();
        post([completion, event](Transaction &transaction) {
            (transaction.*event)().then([completion] { completion->finish(); });
        });
        return future;
    }

    std::shared_ptr<Session> m_session;
    std::shared_ptr<Transaction> m_transaction;
};

} // namespace talmo
