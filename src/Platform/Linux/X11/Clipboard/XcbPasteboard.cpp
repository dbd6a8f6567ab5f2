#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"

#include <utility>

namespace talmo {

XcbPasteboard::XcbPasteboard(std::shared_ptr<XSession> session, std::chrono::milliseconds secretTime)
    : m_session(std::move(session))
{
    auto made = m_session->executor().call(
        [raw = m_session.get(), secretTime] { return std::make_shared<PasteTransaction>(*raw, secretTime); });
    m_transaction = made.result();
}

XcbPasteboard::~XcbPasteboard()
{
    // Its timers live on the session's thread and must be destroyed there.
    m_session->executor()
        .call([transaction = std::move(m_transaction)]() mutable { transaction.reset(); })
        .waitForFinished();
}

void XcbPasteboard::post(std::function<void(PasteTransaction &)> work)
{
    m_session->executor().post([transaction = m_transaction, work = std::move(work)] { work(*transaction); });
}

void XcbPasteboard::beginPaste()
{
    post([](PasteTransaction &transaction) { transaction.begin(); });
}

void XcbPasteboard::endPaste()
{
    post([](PasteTransaction &transaction) { transaction.end(); });
}

QFuture<QList<PasteboardItem>> XcbPasteboard::items()
{
    return m_session->executor().run<QList<PasteboardItem>>(
        [transaction = m_transaction] { return PasteTransaction::snapshot(transaction); });
}

void XcbPasteboard::clearContents()
{
    post([](PasteTransaction &transaction) { transaction.clear(); });
}

void XcbPasteboard::setString(const QString &text)
{
    post([text](PasteTransaction &transaction) { transaction.setString(text); });
}

void XcbPasteboard::writeItems(const QList<PasteboardItem> &items)
{
    post([items](PasteTransaction &transaction) { transaction.writeItems(items); });
}

QFuture<void> XcbPasteboard::when(QFuture<void> (PasteTransaction::*event)())
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    post([completion, event](PasteTransaction &transaction) {
        (transaction.*event)().then([completion] { completion->finish(); });
    });
    return future;
}

QFuture<void> XcbPasteboard::settled()
{
    return when(&PasteTransaction::settled);
}

QFuture<PasteReceipt> XcbPasteboard::receipt()
{
    auto completion = Completion<PasteReceipt>::make();
    auto future = completion->future();
    post([completion](PasteTransaction &transaction) {
        transaction.receipt().then([completion](const PasteReceipt &receipt) { completion->finish(receipt); });
    });
    return future;
}

QFuture<bool> XcbPasteboard::putEarlierClipboardBack()
{
    return m_session->executor().call([transaction = m_transaction] { return transaction->putEarlierBack(); });
}

void XcbPasteboard::setOnLoss(PasteTransaction::OnLoss callback)
{
    post([callback = std::move(callback)](PasteTransaction &transaction) { transaction.setOnLoss(callback); });
}

QFuture<void> XcbPasteboard::ownershipLost()
{
    return when(&PasteTransaction::ownershipLost);
}

QFuture<void> XcbPasteboard::shutDown()
{
    return m_session->executor().run<void>(
        [transaction = m_transaction] { return PasteTransaction::shutDown(transaction); });
}

} // namespace talmo
