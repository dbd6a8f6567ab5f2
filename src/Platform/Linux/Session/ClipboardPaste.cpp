#include "Platform/Linux/Session/ClipboardPaste.h"

#include "Platform/Linux/Session/ClipboardHints.h"

#include <utility>

namespace talmo {

namespace {

/// The most times the text is put back on the clipboard if another program takes the clipboard before it was read.
constexpr int mostClaims = 3;

QList<PasteboardRepresentation> flattened(const QList<PasteboardItem> &items)
{
    QList<PasteboardRepresentation> all;
    for (const auto &item : items) {
        all += item.representations;
    }
    return all;
}

} // namespace

ClipboardPaste::ClipboardPaste(EarlierContent::Moment moment, std::chrono::milliseconds secretTime)
    : m_earlier([this] { putEarlierBack(); }, moment),
      m_secret([this] { removeSecret(); }, secretTime)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { restoreIfDue(); });
}

ClipboardPaste::Time ClipboardPaste::now()
{
    return std::chrono::steady_clock::now();
}

void ClipboardPaste::begin()
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
    forgetTarget();
    m_policy.begin();
    m_receipt = Completion<PasteReceipt>::make();
}

void ClipboardPaste::beginIfDue()
{
    if (std::exchange(m_beginsAfterRestore, false)) {
        begin();
    }
}

void ClipboardPaste::clear()
{
    if (m_isPasting && m_hasText) {
        m_restore = Content();
    } else if (!m_isPasting) {
        m_earlier.drop();
        disown();
    }
    // Within a paste, before its text: that follows at once. An empty clipboard in between would only cause clipboard
    // managers to fill it.
}

void ClipboardPaste::setString(const QString &text)
{
    m_text = text;
    m_textTime = now();
    m_hasText = m_isPasting;
    if (!m_isPasting) {
        m_earlier.drop();
        m_secret.forget();
    }
    if (!own(textContent(text)) && m_isPasting) {
        refuse(Outcome::ClipboardLost);
    }
}

void ClipboardPaste::writeItems(const QList<PasteboardItem> &items)
{
    if (m_isPasting && m_hasText) {
        m_restore = flattened(items);
    } else {
        m_earlier.drop();
        own(flattened(items));
    }
}

void ClipboardPaste::refuse(Outcome outcome)
{
    m_refusal = outcome;
    restoreIfDue();
}

void ClipboardPaste::end()
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

void ClipboardPaste::handleRead()
{
    if (m_policy.isRead()) {
        conclude(Outcome::Taken);
    }
    restoreIfDue();
}

void ClipboardPaste::handleLost()
{
    m_waitingForLoss.finish();
    const bool isUnread = m_hasText && !m_policy.isRead();
    if (m_isPasting && isUnread && m_claims < mostClaims) {
        ++m_claims;
        own(textContent(m_text)); // The frontmost program must get the text, not what another program put there.
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
        handleTaken();
    }
}

bool ClipboardPaste::holdsSecret(const Content &content) const
{
    return m_secret.isSecret() && isSecret(content);
}

/// A secret that a paste or an unread text has displaced is removed when it would be restored.
void ClipboardPaste::removeSecret()
{
    const bool stands = !m_isPasting && !m_restore && !m_earlier.isHeld();
    if (stands && isOwner() && isSecret(ownContent())) {
        stand({});
    }
}

void ClipboardPaste::bringBack(const Content &content)
{
    const bool isOver = holdsSecret(content) && m_secret.isOver();
    stand(isOver ? Content() : content);
    if (holdsSecret(content) && !isOver) {
        m_secret.putBack();
    }
}

void ClipboardPaste::restoreIfDue()
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
        withhold(unreadOutcome());
        return;
    case RestorePolicy::Verdict::Wait:
        break;
    }
    if (isHopeless(time)) {
        withhold(Outcome::NotTaken);
        return;
    }
    const auto next = awaitRead(time, m_policy.nextLook(time));
    // The timer stops once the restore is done.
    m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(next - time));
}

void ClipboardPaste::conclude(Outcome outcome)
{
    if (m_receipt) {
        m_receipt->finish(PasteReceipt{outcome, shortcutName(style())});
    }
}

/// The text stays on the clipboard, and Talmo stays its owner, until a program reads it or the user asks for the
/// earlier content.
void ClipboardPaste::withhold(Outcome outcome)
{
    m_timer.stop();
    m_earlier.keep(std::exchange(m_restore, std::nullopt));
    m_earlier.forgetRequests();
    handleWithheld(outcome);
    if (outcome == Outcome::ClipboardLost) {
        m_earlier.drop();
    }
    conclude(outcome);
    m_waiting.finish();
}

void ClipboardPaste::applyRestore()
{
    m_timer.stop();
    m_policy.begin();
    m_earlier.drop();
    leaveTarget();
    if (const auto restore = std::exchange(m_restore, std::nullopt)) {
        bringBack(*restore);
    }
    giveBackPrimary();
    m_waiting.finish();
}

bool ClipboardPaste::putEarlierBack()
{
    if (!m_earlier.isHeld() || m_isPasting || m_restore) {
        return false;
    }
    m_restore = m_earlier.content();
    applyRestore();
    return true;
}

QFuture<PasteReceipt> ClipboardPaste::receipt()
{
    return m_receipt ? m_receipt->future() : makeReadyFuture(PasteReceipt());
}

QFuture<void> ClipboardPaste::settled()
{
    return m_restore ? m_waiting.wait() : makeReadyFuture();
}

} // namespace talmo
