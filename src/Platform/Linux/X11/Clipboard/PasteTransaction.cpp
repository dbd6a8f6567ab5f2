#include "Platform/Linux/X11/Clipboard/PasteTransaction.h"

#include "Platform/Linux/Session/ClipboardHints.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

/// A window that has not read the text by then is pinged.
constexpr auto pingDelay = 1000ms;
/// Between a compositor's question for the types of the text and its offer to its windows.
constexpr auto offerTime = 20ms;

} // namespace

PasteTransaction::PasteTransaction(XSession &session, std::chrono::milliseconds secretTime)
    : ClipboardPaste(EarlierContent::Moment::AfterLastRequest, secretTime),
      m_session(session),
      m_clipboard(session, "CLIPBOARD"),
      m_primary(session),
      m_overdue(session, m_clipboard, m_primary.server()),
      m_snapshots(std::make_shared<SnapshotReader>(session, secret()))
{
    m_clipboard.setOnRequest([this](const SelectionServer::Request &request) {
        m_clipboardAskers.emplace(request.client, now());
        handleRequest(request);
    });
    m_primary.server().setOnRequest([this](const SelectionServer::Request &request) {
        m_primaryAskers.emplace(request.client, now());
        handleRequest(request);
    });
    m_clipboard.setOnLost([this] { handleLost(); });
    m_overdue.setOnEmpty([this] {
        if (m_clipboard.isOwner() && m_clipboard.content().isEmpty()) {
            m_clipboard.disown();
        }
    });
    m_session.setOnConnectionLost([this] { finishLoss(); });
}

PasteTransaction::~PasteTransaction()
{
    // The members were the session's only listeners; events may still arrive until it ends.
    m_session.removeEventHandlers();
}

QCoro::Task<QList<PasteboardItem>> PasteTransaction::snapshot(std::shared_ptr<PasteTransaction> self)
{
    const auto idle = self->settled();
    co_await idle;
    self->beginIfDue();
    self->m_session.synchronise(); // Another program may have just taken the clipboard.
    Content all;
    if (self->holdsEarlier() && self->m_clipboard.isOwner()) {
        all = self->earlier().content().value_or(Content()); // A text that was not pasted is not the user's clipboard.
    } else {
        all = co_await SnapshotReader::read(self->m_snapshots, &self->m_clipboard);
    }
    self->earlier().forgetRequests();
    if (self->isPasting() && !self->m_primary.isTaken() && self->pastesPrimary()) {
        Content snapshot = co_await SnapshotReader::read(self->m_snapshots, &self->m_primary.server());
        self->m_primary.setSnapshot(std::move(snapshot));
    }
    co_return all.isEmpty() ? QList<PasteboardItem>() : QList<PasteboardItem>{PasteboardItem{all}};
}

bool PasteTransaction::pastesPrimary() const
{
    const auto front = frontWindow(m_session);
    const bool isBeyond = front.window == XCB_NONE && m_session.isNested();
    return isBeyond ? m_pastesPrimaryBeyond && m_pastesPrimaryBeyond() : front.style == PasteStyle::ShiftInsertPrimary;
}

bool PasteTransaction::chooseTarget(const FrontWindow &front)
{
    if (isUnderWay() && isRefused()) {
        return false;
    }
    if (front.window == XCB_NONE) {
        refuse(Outcome::NoWindow);
        return false;
    }
    m_target = front;
    if (m_overdue.extend(front, text())) {
        refuse(Outcome::WindowHangs);
        return false;
    }
    if (front.style == PasteStyle::ShiftInsertPrimary && isPasting()) {
        m_primaryAskers.clear();
        m_primary.take(m_clipboard.content());
    }
    return true;
}

bool PasteTransaction::own(const Content &content)
{
    m_clipboardAskers.clear();
    return m_clipboard.own(content);
}

bool PasteTransaction::isOfferedBy(quint32 compositor) const
{
    const auto isOffered = [compositor, time = now()](const Askers &askers) {
        const auto asked = askers.find(compositor);
        return asked != askers.end() && time - asked->second >= offerTime;
    };
    return isOffered(m_clipboardAskers) && (!m_primary.isTaken() || isOffered(m_primaryAskers));
}

void PasteTransaction::notePosted(const FrontWindow &target)
{
    if (target.isImporter) {
        policy().postToImporter(now());
    } else {
        policy().post(now(), target.client);
    }
    restoreIfDue();
}

quint32 PasteTransaction::readerOf(const SelectionServer::Request &request)
{
    const bool isForeign = policy().isPosted() && !policy().isRead() && request.client != m_target.client;
    return isForeign && isEmbeddedIn(m_session, m_target.topLevel, request.client) ? m_target.client : request.client;
}

void PasteTransaction::handleRequest(const SelectionServer::Request &request)
{
    const bool isData = request.wantsData && request.wasServed;
    if (isData) {
        m_overdue.noteRead(request.client);
    }
    if (isWithheld()) {
        noteLateRead(request);
        return;
    }
    policy().noteRequest(now(), readerOf(request), isData);
    handleRead();
}

/// The reader is a window that responds again, or the user's own paste into the frontmost window.
void PasteTransaction::noteLateRead(const SelectionServer::Request &request)
{
    const bool isTarget = m_target.window != XCB_NONE ? request.client == m_target.client ||
                                                            isEmbeddedIn(m_session, m_target.topLevel, request.client)
                                                      : frontWindow(m_session).client == request.client;
    if (isTarget) {
        earlier().noteRequest(request.wantsData && request.wasServed);
    }
}

PasteReceipt::Outcome PasteTransaction::unreadOutcome() const
{
    return m_overdue.hangs(m_target) ? Outcome::WindowHangs : Outcome::NotTaken;
}

ClipboardPaste::Time PasteTransaction::awaitRead(Time now, Time next)
{
    if (!policy().isPosted() || policy().isRead()) {
        return next;
    }
    const auto pingTime = next - RestorePolicy::readTime + pingDelay;
    if (now < pingTime) {
        return pingTime;
    }
    m_overdue.ask(m_target);
    return next;
}

void PasteTransaction::handleWithheld(Outcome outcome)
{
    if (outcome == Outcome::WindowHangs && !isRefused()) {
        m_overdue.add(m_target, text());
    } else {
        m_overdue.stopAsking(m_target);
    }
}

void PasteTransaction::stand(const Content &content)
{
    if (content.isEmpty() && m_overdue.isEmpty()) {
        m_clipboard.disown();
    } else {
        m_clipboard.own(content);
    }
}

QFuture<void> PasteTransaction::ownershipLost()
{
    m_session.synchronise();
    const bool ownsClipboard = m_clipboard.isOwner() && !m_session.connection().isBroken();
    return ownsClipboard ? loss() : makeReadyFuture();
}

QCoro::Task<void> PasteTransaction::shutDown(std::shared_ptr<PasteTransaction> self)
{
    // A running paste will not be ended by anyone else; the content it saved is still restored.
    self->end();
    const auto idle = self->settled();
    co_await idle;
    // A secret must not be passed to a clipboard manager.
    if (self->m_clipboard.isOwner() && !self->holdsSecret(self->m_clipboard.content())) {
        co_await self->m_snapshots->handOver();
    }
}

} // namespace talmo
