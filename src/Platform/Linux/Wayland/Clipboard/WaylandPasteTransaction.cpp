#include "Platform/Linux/Wayland/Clipboard/WaylandPasteTransaction.h"

#include "Platform/Linux/Session/ClipboardHints.h"

#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

/// The paste waits for the snapshot.
constexpr auto snapshotPause = 500ms;
constexpr auto snapshotTime = 2000ms;
/// The most times the text is put back on the clipboard if another program takes the clipboard before it was read.
constexpr int mostClaims = 3;
/// A compositor that has not carried out the shortcut by then hangs. The text is there when it recovers.
constexpr auto longestPosting = 1500ms;
/// From the first read of the text on, a program may take this long to ask for all that it wants.
constexpr auto longestReading = 1s;

RestorePolicy::Time now()
{
    return std::chrono::steady_clock::now();
}

QList<PasteboardRepresentation> textRepresentations(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    QList<PasteboardRepresentation> all;
    for (const auto *type : {"text/plain;charset=utf-8", "text/plain", "UTF8_STRING", "STRING", "TEXT"}) {
        const QString name = QString::fromLatin1(type);
        all.append({name, utf8, name, 8});
    }
    return all + historyHints();
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

WaylandPasteTransaction::WaylandPasteTransaction(std::shared_ptr<DataControl> control, FrontSource front,
                                                 std::chrono::milliseconds secretTime)
    : m_control(std::move(control)),
      m_front(std::move(front)),
      m_clipboard(*m_control, WaylandSelection::Clipboard),
      m_primary(*m_control, WaylandSelection::Primary),
      m_reader(*m_control),
      m_earlier([this] { putEarlierBack(); }, EarlierContent::Moment::AfterFirstRequest)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { evaluate(); });
    m_secretTimer.setSingleShot(true);
    m_secretTimer.setInterval(secretTime);
    QObject::connect(&m_secretTimer, &QTimer::timeout, &m_secretTimer, [this] { endSecret(); });
    const auto onRead = [this](const OwnedSelection::Read &read) { handleRead(read); };
    m_clipboard.setOnRead(onRead);
    m_primary.setOnRead(onRead);
    m_clipboard.setOnLost([this] { handleLost(); });
}

void WaylandPasteTransaction::begin()
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
    m_style = PasteStyle::ControlV;
    m_policy.begin();
    m_receipt = Completion<PasteReceipt>::make();
}

QCoro::Task<QList<PasteboardItem>> WaylandPasteTransaction::snapshot(std::shared_ptr<WaylandPasteTransaction> self)
{
    const auto idle = self->settled();
    co_await idle;
    if (std::exchange(self->m_beginsAfterRestore, false)) {
        self->begin();
    }
    self->m_control->session().synchronise(); // Another program may have just taken the clipboard.
    Content all;
    if (self->m_earlier.isHeld() && self->m_clipboard.isOwner()) {
        all = self->m_earlier.content().value_or(Content()); // A text that was not pasted is not the user's clipboard.
    } else {
        all = co_await readOrOwn(self, &self->m_clipboard, WaylandSelection::Clipboard);
    }
    self->m_earlier.forgetRequests();
    if (self->m_isPasting && !self->m_ownsPrimaryForPaste && self->pastesPrimary(self->m_front())) {
        self->m_primarySnapshot = co_await readOrOwn(self, &self->m_primary, WaylandSelection::Primary);
    }
    co_return all.isEmpty() ? QList<PasteboardItem>() : QList<PasteboardItem>{PasteboardItem{all}};
}

QCoro::Task<WaylandPasteTransaction::Content>
WaylandPasteTransaction::readOrOwn(std::shared_ptr<WaylandPasteTransaction> self, OwnedSelection *owned,
                                   WaylandSelection selection)
{
    if (owned->isOwner()) {
        co_return owned->content();
    }
    const auto reading = co_await self->m_reader.read(selection, snapshotPause, snapshotTime);
    if (reading.loss != OfferReading::Loss::None && self->m_onLoss) {
        self->m_onLoss(reading.loss);
    }
    co_return reading.representations;
}

void WaylandPasteTransaction::clear()
{
    if (m_isPasting && m_hasText) {
        m_restore = Content();
    } else if (!m_isPasting) {
        m_earlier.drop();
        m_clipboard.disown();
    }
    // Within a paste, before its text: that follows at once, and some clipboard managers refill an empty clipboard.
}

void WaylandPasteTransaction::setString(const QString &text)
{
    m_text = text;
    m_textTime = now();
    m_hasText = m_isPasting;
    if (!m_isPasting) {
        m_earlier.drop();
    }
    m_clipboard.own(textRepresentations(text));
}

void WaylandPasteTransaction::writeItems(const QList<PasteboardItem> &items)
{
    if (m_isPasting && m_hasText) {
        m_restore = flattened(items);
    } else {
        m_earlier.drop();
        m_clipboard.own(flattened(items));
    }
}

bool WaylandPasteTransaction::pastesPrimary(const FrontApplication &front) const
{
    return !front.isKnown || pasteStyleFor(QString(), front.name) == PasteStyle::ShiftInsertPrimary;
}

PasteStyle WaylandPasteTransaction::chooseStyle(const FrontApplication &front)
{
    m_target = front;
    m_style = front.isKnown ? pasteStyleFor(QString(), front.name) : PasteStyle::ShiftInsertPrimary;
    if (m_style == PasteStyle::ShiftInsertPrimary && m_isPasting) {
        m_primary.own(m_clipboard.content());
        m_ownsPrimaryForPaste = true;
    }
    return m_style;
}

void WaylandPasteTransaction::notePosted()
{
    m_postTime = now();
    if (m_target.isKnown && importsClipboard(QString(), m_target.name)) {
        m_policy.postToImporter(m_postTime);
    } else {
        m_policy.post(m_postTime, std::nullopt);
    }
    evaluate();
}

void WaylandPasteTransaction::refuse(Outcome outcome)
{
    m_refusal = outcome;
    evaluate();
}

void WaylandPasteTransaction::end()
{
    m_isPasting = false;
    if (m_restore && m_wasLost) {
        conclude(Outcome::Taken);
        applyRestore(); // Another program took the clipboard after the text was read; the user's content is restored
                        // anyway.
        return;
    }
    evaluate(); // If there is nothing to restore, the paste was cut short: the text stays on the clipboard.
}

void WaylandPasteTransaction::handleRead(const OwnedSelection::Read &read)
{
    if (m_earlier.isHeld() && !m_restore && !m_isPasting) {
        // A clipboard manager reads as soon as the text is there; the user's own paste takes longer.
        if (read.time >= m_textTime + RestorePolicy::readTime) {
            m_earlier.noteRequest(read.hasText);
        }
        return;
    }
    // A program that asked before the shortcut is not the one that pastes, however late the value reached it. Only the
    // one that imports the clipboard may have asked then.
    const bool isOfPaste = !m_policy.isPosted() || read.time >= m_postTime;
    // Nobody can tell who reads. A program that does so again and again must not keep the text on the clipboard.
    const bool isLater = m_policy.isRead() && now() >= m_readTime + longestReading;
    if (isOfPaste && !isLater) {
        const bool wasRead = m_policy.isRead();
        m_policy.noteRequest(now(), 0, read.hasText);
        if (!wasRead && m_policy.isRead()) {
            m_readTime = now();
        }
    }
    if (m_policy.isRead()) {
        conclude(Outcome::Taken);
    }
    evaluate();
}

void WaylandPasteTransaction::handleLost()
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
    }
}

void WaylandPasteTransaction::endSecret()
{
    const bool stands = !m_isPasting && !m_restore && !m_earlier.isHeld();
    if (stands && m_clipboard.isOwner() && isSecret(m_clipboard.content())) {
        m_clipboard.disown();
    }
}

void WaylandPasteTransaction::evaluate()
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
        withhold(m_target.isNone ? Outcome::NoWindow : Outcome::NotTaken);
        return;
    case RestorePolicy::Verdict::Wait:
        break;
    }
    if (!m_policy.isPosted() && time >= m_textTime + longestPosting) {
        withhold(Outcome::NotTaken);
        return;
    }
    // The timer stops once the restore is done.
    m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(m_policy.nextLook(time) - time));
}

void WaylandPasteTransaction::conclude(Outcome outcome)
{
    if (m_receipt) {
        m_receipt->finish(PasteReceipt{outcome, shortcutName(m_style)});
    }
}

/// The text stays on the clipboard, and Talmo stays its owner, until a program reads it or the user asks for the
/// earlier content.
void WaylandPasteTransaction::withhold(Outcome outcome)
{
    m_timer.stop();
    m_earlier.keep(std::exchange(m_restore, std::nullopt));
    m_earlier.forgetRequests();
    if (outcome == Outcome::ClipboardLost) {
        m_earlier.drop();
    }
    conclude(outcome);
    m_waiting.finish();
}

void WaylandPasteTransaction::applyRestore()
{
    m_timer.stop();
    m_policy.begin();
    m_earlier.drop();
    if (const auto restore = std::exchange(m_restore, std::nullopt)) {
        stand(*restore);
        if (isSecret(*restore) && !m_secretTimer.isActive()) {
            m_secretTimer.start();
        }
    }
    standPrimary();
    m_waiting.finish();
}

void WaylandPasteTransaction::stand(const Content &content)
{
    if (content.isEmpty()) {
        m_clipboard.disown();
    } else {
        m_clipboard.own(content);
    }
}

void WaylandPasteTransaction::standPrimary()
{
    if (!std::exchange(m_ownsPrimaryForPaste, false) || !m_primary.isOwner()) {
        return;
    }
    if (m_primarySnapshot.isEmpty()) {
        m_primary.disown();
    } else {
        m_primary.own(m_primarySnapshot);
    }
}

bool WaylandPasteTransaction::putEarlierBack()
{
    if (!m_earlier.isHeld() || m_isPasting || m_restore) {
        return false;
    }
    m_restore = m_earlier.content();
    applyRestore();
    return true;
}

QFuture<PasteReceipt> WaylandPasteTransaction::receipt()
{
    return m_receipt ? m_receipt->future() : ready(PasteReceipt());
}

void WaylandPasteTransaction::handleConnectionLost()
{
    m_waitingForLoss.finish();
    if (m_restore || m_isPasting) {
        refuse(Outcome::ClipboardLost);
    }
}

QFuture<void> WaylandPasteTransaction::ownershipLost()
{
    m_control->session().synchronise();
    const bool ownsClipboard = m_clipboard.isOwner() && !m_control->session().isBroken();
    return ownsClipboard ? m_waitingForLoss.wait() : ready();
}

QFuture<void> WaylandPasteTransaction::settled()
{
    return m_restore ? m_waiting.wait() : ready();
}

} // namespace talmo
