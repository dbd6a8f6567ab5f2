#include "Platform/Linux/XcbPasteboard.h"

#include <utility>

namespace talmo {

XcbPasteboard::XcbPasteboard(std::shared_ptr<XSession> session)
    : m_session(std::move(session))
{
    auto made =
        m_session->executor().call([raw = m_session.get()] { return std::make_shared<PasteTransaction>(*raw); });
    m_transaction = made.result();
}

XcbPasteboard::~XcbPasteboard()
{
    // Its timers live on the session's thread and go there.
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

QFuture<void> XcbPasteboard::relieved()
{
    return when(&PasteTransaction::relieved);
}

QFuture<void> XcbPasteboard::shutDown()
{
    return m_session->executor().run<void>(
        [transaction = m_transaction] { return PasteTransaction::shutDown(transaction); });
}

} // namespace talmo
