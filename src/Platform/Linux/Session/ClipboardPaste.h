#pragma once

#include "Base/WaitingList.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/PasteStyle.h"
#include "Insertion/Pasteboard.h"
#include "Insertion/RestorePolicy.h"
#include "Platform/Linux/Session/EarlierContent.h"
#include "Platform/Linux/Session/SecretLifetime.h"

#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>

namespace talmo {

/// The clipboard's side of a paste, the same on every desktop: the current content, the content to restore, and when to
/// restore it. The earlier content is restored once the program in front has read the text; until then the text
/// stays. Subclasses access the clipboard and report who reads it. The session's thread only, except where noted.
class ClipboardPaste {
public:
    ClipboardPaste(const ClipboardPaste &) = delete;
    ClipboardPaste &operator=(const ClipboardPaste &) = delete;

    void begin();
    void end();
    void clear();
    void setString(const QString &text);
    void writeItems(const QList<PasteboardItem> &items);
    /// Call if the shortcut cannot be posted.
    void refuse(PasteReceipt::Outcome outcome);

    /// The outcome of the last paste.
    QFuture<PasteReceipt> receipt();
    /// Any thread.
    bool holdsEarlier() const { return m_earlier.isHeld(); }
    /// Restores the content that was replaced by a text no program has read; false if there is none.
    bool putEarlierBack();
    /// Finishes once no restore is pending. Earlier content kept behind an unread text does not count as pending.
    QFuture<void> settled();

protected:
    using Content = QList<PasteboardRepresentation>;
    using Outcome = PasteReceipt::Outcome;
    using Time = RestorePolicy::Time;

    /// `secretTime`: see SecretLifetime.
    ClipboardPaste(EarlierContent::Moment moment, std::chrono::milliseconds secretTime);
    virtual ~ClipboardPaste() = default;

    // The clipboard.
    virtual Content textContent(const QString &text) const = 0;
    /// False if it cannot be had.
    virtual bool own(const Content &content) = 0;
    virtual void disown() = 0;
    virtual bool isOwner() const = 0;
    virtual const Content &ownContent() const = 0;
    /// A value is still being transferred.
    virtual bool isSending() const = 0;

    // The program that the text is meant for.
    virtual void forgetTarget() = 0;
    virtual PasteStyle style() const = 0;
    /// Why it has not read the text.
    virtual Outcome unreadOutcome() const = 0;
    /// Called while its read is awaited; returns when to look again, `next` at the latest.
    virtual Time awaitRead(Time /*now*/, Time next) { return next; }
    /// No program will read the text, although the timeout has not passed.
    virtual bool isHopeless(Time /*now*/) const { return false; }
    /// Its read is no longer awaited.
    virtual void leaveTarget() {}
    /// The text stays on the clipboard.
    virtual void handleWithheld(Outcome /*outcome*/) {}

    // The restored content.
    /// The paste no longer needs the clipboard: restores the content, or clears the clipboard if it is empty.
    virtual void stand(const Content &content) = 0;
    virtual void giveBackPrimary() = 0;
    /// Another program owns the clipboard now, and nothing is restored.
    virtual void handleTaken() {}

    // Events that the subclass reports.
    /// Another program has taken the clipboard.
    void handleLost();
    /// The policy has been notified of a read.
    void handleRead();
    void restoreIfDue();
    void withhold(Outcome outcome);
    /// Begins the paste whose begin() came while the restore before was pending.
    void beginIfDue();

    static Time now();
    bool isPasting() const { return m_isPasting; }
    /// The text is not read and will not be, but the earlier content is still there.
    bool isWithheld() const { return m_earlier.isHeld() && !m_restore && !m_isPasting; }
    bool isRefused() const { return m_refusal.has_value(); }
    bool isUnderWay() const { return m_isPasting || m_restore; }
    const QString &text() const { return m_text; }
    Time textTime() const { return m_textTime; }
    RestorePolicy &policy() { return m_policy; }
    const RestorePolicy &policy() const { return m_policy; }
    EarlierContent &earlier() { return m_earlier; }
    SecretLifetime &secret() { return m_secret; }
    /// Whether this is another program's secret.
    bool holdsSecret(const Content &content) const;
    /// Waits until another program owns the clipboard.
    QFuture<void> loss() { return m_waitingForLoss.wait(); }
    void finishLoss() { m_waitingForLoss.finish(); }

private:
    void conclude(Outcome outcome);
    void applyRestore();
    void bringBack(const Content &content);
    void removeSecret();

    bool m_isPasting = false;
    bool m_beginsAfterRestore = false;
    /// The text of this paste has been written; anything written after that is the content to restore.
    bool m_hasText = false;
    QString m_text;
    Time m_textTime;
    int m_claims = 0;
    bool m_wasLost = false;
    RestorePolicy m_policy;
    std::optional<Outcome> m_refusal;
    std::shared_ptr<Completion<PasteReceipt>> m_receipt;

    std::optional<Content> m_restore;
    EarlierContent m_earlier;
    SecretLifetime m_secret;
    QTimer m_timer;
    WaitingList m_waiting;
    WaitingList m_waitingForLoss;
};

} // namespace talmo
