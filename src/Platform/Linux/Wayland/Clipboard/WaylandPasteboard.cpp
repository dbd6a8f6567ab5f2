#include "Platform/Linux/Wayland/Clipboard/WaylandPasteboard.h"

#include <utility>

namespace talmo {

WaylandPasteboard::WaylandPasteboard(std::shared_ptr<WaylandSession> session, std::chrono::milliseconds secretTime)
    : m_session(std::move(session))
{
    m_session->executor()
        .call([this, secretTime] {
            m_transaction = std::make_shared<WaylandPasteTransaction>(std::make_shared<DataControl>(*m_session),
                                                                      openFrontSource(*m_session), secretTime);
            m_session->addOnConnectionLost([weak = std::weak_ptr(m_transaction)] {
                if (const auto transaction = weak.lock()) {
                    transaction->handleConnectionLost();
                }
            });
        })
        .waitForFinished();
}

WaylandPasteboard::~WaylandPasteboard()
{
    // Timers and proxies belong to the session's thread.
    m_session->executor()
        .call([transaction = std::move(m_transaction)]() mutable { transaction.reset(); })
        .waitForFinished();
}

void WaylandPasteboard::post(std::function<void(WaylandPasteTransaction &)> work)
{
    m_session->executor().post([transaction = m_transaction, work = std::move(work)] { work(*transaction); });
}

void WaylandPasteboard::beginPaste()
{
    post([](WaylandPasteTransaction &transaction) { transaction.begin(); });
}

void WaylandPasteboard::endPaste()
{
    post([](WaylandPasteTransaction &transaction) { transaction.end(); });
}

QFuture<QList<PasteboardItem>> WaylandPasteboard::items()
{
    return m_session->executor().run<QList<PasteboardItem>>(
        [transaction = m_transaction] { return WaylandPasteTransaction::snapshot(transaction); });
}

void WaylandPasteboard::clearContents()
{
    post([](WaylandPasteTransaction &transaction) { transaction.clear(); });
}

void WaylandPasteboard::setString(const QString &text)
{
    post([text](WaylandPasteTransaction &transaction) { transaction.setString(text); });
}

void WaylandPasteboard::writeItems(const QList<PasteboardItem> &items)
{
    post([items](WaylandPasteTransaction &transaction) { transaction.writeItems(items); });
}

QFuture<void> WaylandPasteboard::when(QFuture<void> (WaylandPasteTransaction::*event)())
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    post([completion, event](WaylandPasteTransaction &transaction) {
        (transaction.*event)().then([completion] { completion->finish(); });
    });
    return future;
}

QFuture<void> WaylandPasteboard::settled()
{
    return when(&WaylandPasteTransaction::settled);
}

QFuture<PasteReceipt> WaylandPasteboard::receipt()
{
    auto completion = Completion<PasteReceipt>::make();
    auto future = completion->future();
    post([completion](WaylandPasteTransaction &transaction) {
        transaction.receipt().then([completion](const PasteReceipt &receipt) { completion->finish(receipt); });
    });
    return future;
}

QFuture<bool> WaylandPasteboard::putEarlierClipboardBack()
{
    return m_session->executor().call([transaction = m_transaction] { return transaction->putEarlierBack(); });
}

void WaylandPasteboard::setOnLoss(WaylandPasteTransaction::OnLoss callback)
{
    post([callback = std::move(callback)](WaylandPasteTransaction &transaction) { transaction.setOnLoss(callback); });
}

QFuture<void> WaylandPasteboard::ownershipLost()
{
    return when(&WaylandPasteTransaction::ownershipLost);
}

QFuture<void> WaylandPasteboard::shutDown()
{
    endPaste(); // Nobody else will end a paste under way; the content it saved is still restored.
    return settled();
}

} // namespace talmo
