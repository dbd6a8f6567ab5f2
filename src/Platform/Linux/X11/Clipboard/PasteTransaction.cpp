#include "Platform/Linux/X11/Clipboard/PasteTransaction.h"

#include "Platform/Linux/Session/ClipboardHints.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;
using Outcome = PasteReceipt::Outcome;

/// A window that has not read the text by then is pinged.
constexpr auto pingDelay = 1000ms;
/// The most times the text is put back on the clipboard if another program takes the clipboard before it was read.
constexpr int mostClaims = 3;

RestorePolicy::Time now()
{
    return std::chrono::steady_clock::now();
}

QList<PasteboardRepresentation> flattened(const QList<PasteboardItem> &items)
{
    QList<PasteboardRepresentation> all;
    for (const auto &item : items) {
        all += item.representations;
    }
    return all;
}

} // namespace

PasteTransaction::PasteTransaction(XSession &session, std::chrono::milliseconds secretTime)
    : m_session(session),
      m_clipboard(session, "CLIPBOARD"),
      m_primary(session),
      m_overdue(session, m_clipboard, m_primary.server()),
      m_secret(
          session, [this] { endSecret(); }, secretTime),
      m_snapshots(std::make_shared<SnapshotReader>(session, m_secret)),
      m_earlier([this] { putEarlierBack(); })
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { restoreIfDue(); });
    const auto onRequest = [this](const SelectionServer::Request &request) { handleRequest(request); };
    m_clipboard.setOnRequest(onRequest);
    m_primary.server().setOnRequest(onRequest);
    m_clipboard.setOnLost([this] { handleLost(); });
    m_overdue.setOnEmpty([this] {
        if (m_clipboard.isOwner() && m_clipboard.content().isEmpty()) {
            m_clipboard.disown();
        }
    });
    m_session.setOnConnectionLost([this] { m_waitingForLoss.finish(); });
}

PasteTransaction::~PasteTransaction()
{
    // The members were the session's only listeners; events may still arrive until it ends.
    m_session.removeEventHandlers();
}

void PasteTransaction::begin()
{
    m_beginsAfterRestore = m_restore.has_value();
    if (m_beginsAfterRestore) {
        return;
    }
    m_isPasting = true;
    m_hasText = false;
    m_wasLost = false;
    m_claims = 0;
    m_refusal.reset();
    m_target = {};
    m_policy.begin();
    m_receipt = Completion<PasteReceipt>::make();
}

QCoro::Task<QList<PasteboardItem>> PasteTransaction::snapshot(std::shared_ptr<PasteTransaction> self)
{
    const auto idle = self->settled();
    co_await idle;
    if (std::exchange(self->m_beginsAfterRestore, false)) {
        self->begin();
    }
    self->m_session.synchronise(); // Another program may have just taken the clipboard.
    Content all;
    if (self->m_earlier.isHeld() && self->m_clipboard.isOwner()) {
        all = self->m_earlier.content().value_or(Content()); // A text that was not pasted is not the user's clipboard.
    } else {
        all = co_await SnapshotReader::read(self->m_snapshots, &self->m_clipboard);
    }
    self->m_earlier.forgetRequests();
    const bool takesPrimary = self->m_isPasting && !self->m_primary.isTaken() &&
                              frontWindow(self->m_session).style == PasteStyle::ShiftInsertPrimary;
    if (takesPrimary) {
        Content snapshot = co_await SnapshotReader::read(self->m_snapshots, &self->m_primary.server());
        self->m_primary.setSnapshot(std::move(snapshot));
    }
    co_return all.isEmpty() ? QList<PasteboardItem>() : QList<PasteboardItem>{PasteboardItem{all}};
}

void PasteTransaction::clear()
{
    if (m_isPasting && m_hasText) {
        m_restore = Content();
    } else if (!m_isPasting) {
        m_earlier.drop();
        m_clipboard.disown();
    }
    // Within a paste, before its text: that follows at once. An empty clipboard in between would only cause clipboard
    // managers to fill it.
}

void PasteTransaction::setString(const QString &text)
{
    m_text = text;
    m_hasText = m_isPasting;
    if (!m_isPasting) {
        m_secret.forget();
        m_earlier.drop();
    }
    if (!m_clipboard.own(textRepresentations(text)) && m_isPasting) {
        refuse(Outcome::ClipboardLost);
    }
}

void PasteTransaction::writeItems(const QList<PasteboardItem> &items)
{
    if (m_isPasting && m_hasText) {
        m_restore = flattened(items);
    } else {
        m_clipboard.own(flattened(items));
    }
}

bool PasteTransaction::chooseTarget(const FrontWindow &front)
{
    const bool belongsToPaste = m_isPasting || m_restore;
    if (belongsToPaste && m_refusal) {
        return false;
    }
    if (front.window == XCB_NONE) {
        refuse(Outcome::NoWindow);
        return false;
    }
    m_target = front;
    if (m_overdue.extend(front, m_text)) {
        refuse(Outcome::WindowHangs);
        return false;
    }
    if (front.style == PasteStyle::ShiftInsertPrimary && m_isPasting) {
        m_primary.take(m_clipboard.content());
    }
    return true;
}

void PasteTransaction::notePosted(const FrontWindow &target)
{
    if (target.isImporter) {
        m_policy.postToImporter(now());
    } else {
        m_policy.post(now(), target.client);
    }
    restoreIfDue();
}

void PasteTransaction::refuse(Outcome outcome)
{
    m_refusal = outcome;
    restoreIfDue();
}

void PasteTransaction::end()
{
    m_isPasting = false;
    if (m_restore && m_wasLost) {
        conclude(Outcome::Taken);
        applyRestore(); // Another program took the clipboard after the text was read; the user's content is restored
                        // anyway.
        return;
    }
    restoreIfDue(); // If there is nothing to restore, the paste was cut short: the text stays on the clipboard.
}

quint32 PasteTransaction::readerOf(const SelectionServer::Request &request)
{
    const bool isForeign = m_policy.isPosted() && !m_policy.isRead() && request.client != m_target.client;
    return isForeign && isEmbeddedIn(m_session, m_target.topLevel, request.client) ? m_target.client : request.client;
}

void PasteTransaction::handleRequest(const SelectionServer::Request &request)
{
    const bool isData = request.wantsData && request.wasServed;
    if (isData) {
        m_overdue.noteRead(request.client);
    }
    if (m_earlier.isHeld() && !m_restore && !m_isPasting) {
        noteLateRead(request);
        return;
    }
    m_policy.noteRequest(now(), readerOf(request), isData);
    if (m_policy.isRead()) {
        conclude(Outcome::Taken);
    }
    restoreIfDue();
}

/// The reader is a window that responds again, or the user's own paste into the frontmost window.
void PasteTransaction::noteLateRead(const SelectionServer::Request &request)
{
    const bool isTarget = m_target.window != XCB_NONE ? request.client == m_target.client ||
                                                            isEmbeddedIn(m_session, m_target.topLevel, request.client)
                                                      : frontWindow(m_session).client == request.client;
    if (isTarget) {
        m_earlier.noteRequest(request.wantsData && request.wasServed);
    }
}

void PasteTransaction::handleLost()
{
    m_waitingForLoss.finish();
    const bool isUnread = m_hasText && !m_policy.isRead();
    if (m_isPasting && isUnread && m_claims < mostClaims) {
        ++m_claims;
        m_clipboard.own(textRepresentations(
            m_text)); // The frontmost program must get the text, not what another program put there.
    } else if (m_isPasting) {
        m_wasLost = m_policy.isRead();
        m_refusal = isUnread ? std::optional(Outcome::ClipboardLost) : m_refusal;
    } else if (m_restore) {
        // Written after the restore was requested: what the user copied in the meantime is the newest content.
        conclude(isUnread ? Outcome::ClipboardLost : Outcome::Taken);
        m_restore.reset();
        applyRestore();
    } else {
        m_earlier.drop();
        m_overdue.clear();
    }
}

void PasteTransaction::endSecret()
{
    const bool stands = !m_isPasting && !m_restore && !m_earlier.isHeld();
    if (stands && m_clipboard.isOwner() && isSecret(m_clipboard.content())) {
        stand({});
    }
}

void PasteTransaction::restoreIfDue()
{
    if (!m_restore || m_isPasting) {
        return;
    }
    if (m_refusal) {
        withhold(*m_refusal);
        return;
    }
    const auto time = now();
    switch (m_policy.verdict(time, isSending())) {
    case RestorePolicy::Verdict::Restore:
        conclude(Outcome::Taken);
        applyRestore();
        return;
    case RestorePolicy::Verdict::GiveUp:
        withhold(m_overdue.hangs(m_target) ? Outcome::WindowHangs : Outcome::NotTaken);
        return;
    case RestorePolicy::Verdict::Wait:
        break;
    }
    auto next = m_policy.nextLook(time);
    if (m_policy.isPosted() && !m_policy.isRead()) {
        const auto pingTime = next - RestorePolicy::readTime + pingDelay;
        if (time >= pingTime) {
            m_overdue.ask(m_target);
        } else {
            next = pingTime;
        }
    }
    // The timer stops once the restore is done.
    m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(next - time));
}

void PasteTransaction::conclude(Outcome outcome)
{
    if (m_receipt) {
        m_receipt->finish(PasteReceipt{outcome, shortcutName(m_target.style)});
    }
}

/// The text stays on the clipboard, and Talmo stays its owner, until a program reads it or the user asks for the
/// earlier content.
void PasteTransaction::withhold(Outcome outcome)
{
    m_timer.stop();
    m_earlier.keep(std::exchange(m_restore, std::nullopt));
    m_earlier.forgetRequests();
    if (outcome == Outcome::WindowHangs && !m_refusal) {
        m_overdue.add(m_target, m_text);
    } else {
        m_overdue.stopAsking(m_target);
    }
    if (outcome == Outcome::ClipboardLost) {
        m_earlier.drop();
    }
    conclude(outcome);
    m_waiting.finish();
}

void PasteTransaction::applyRestore()
{
    m_timer.stop();
    m_overdue.stopAsking(m_target);
    m_policy.begin();
    m_earlier.drop();
    if (const auto restore = std::exchange(m_restore, std::nullopt)) {
        const bool holdsSecret = m_secret.isSecret() && isSecret(*restore);
        stand(holdsSecret && m_secret.isOver() ? Content() : *restore);
        if (holdsSecret && !m_secret.isOver()) {
            m_secret.putBack();
        }
    }
    m_primary.giveBack();
    m_waiting.finish();
}

void PasteTransaction::stand(const Content &content)
{
    if (content.isEmpty() && m_overdue.isEmpty()) {
        m_clipboard.disown();
    } else {
        m_clipboard.own(content);
    }
}

bool PasteTransaction::putEarlierBack()
{
    if (!m_earlier.isHeld() || m_isPasting || m_restore) {
        return false;
    }
    m_restore = m_earlier.content();
    applyRestore();
    return true;
}

QFuture<PasteReceipt> PasteTransaction::receipt()
{
    return m_receipt ? m_receipt->future() : ready(PasteReceipt());
}

QFuture<void> PasteTransaction::ownershipLost()
{
    m_session.synchronise();
    const bool ownsClipboard = m_clipboard.isOwner() && !m_session.connection().isBroken();
    return ownsClipboard ? m_waitingForLoss.wait() : ready();
}

QFuture<void> PasteTransaction::settled()
{
    return m_restore ? m_waiting.wait() : ready();
}

QCoro::Task<void> PasteTransaction::shutDown(std::shared_ptr<PasteTransaction> self)
{
    // A running paste will not be ended by anyone else; the content it saved is still restored.
    self->end();
    const auto idle = self->settled();
    co_await idle;
    // A secret must not be passed to a clipboard manager.
    if (self->m_clipboard.isOwner() && !(self->m_secret.isSecret() && isSecret(self->m_clipboard.content()))) {
        co_await self->m_snapshots->handOver();
    }
}

} // namespace talmo
