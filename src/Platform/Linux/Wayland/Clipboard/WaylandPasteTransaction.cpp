#include "Platform/Linux/Wayland/Clipboard/WaylandPasteTransaction.h"

#include "Platform/Linux/Session/ClipboardHints.h"

#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

/// The paste waits for the snapshot.
constexpr auto snapshotPause = 500ms;
constexpr auto snapshotTime = 2000ms;
/// A compositor that has not carried out the shortcut by then hangs. The text is still there when it recovers.
constexpr auto longestPosting = 1500ms;
/// From the first read of the text on, a program may take this long to ask for all that it wants.
constexpr auto longestReading = 1s;

} // namespace

WaylandPasteTransaction::WaylandPasteTransaction(std::shared_ptr<DataControl> control, FrontSource front,
                                                 std::chrono::milliseconds secretTime)
    : ClipboardPaste(EarlierContent::Moment::AfterFirstRequest, secretTime),
      m_control(std::move(control)),
      m_front(std::move(front)),
      m_clipboard(*m_control, WaylandSelection::Clipboard),
      m_primary(*m_control, WaylandSelection::Primary),
      m_reader(*m_control)
{
    const auto onRead = [this](const OwnedSelection::Read &read) { noteRead(read); };
    m_clipboard.setOnRead(onRead);
    m_primary.setOnRead(onRead);
    m_clipboard.setOnLost([this] { handleLost(); });
}

ClipboardPaste::Content WaylandPasteTransaction::textContent(const QString &text) const
{
    const QByteArray utf8 = text.toUtf8();
    Content all;
    for (const auto *type : {"text/plain;charset=utf-8", "text/plain", "UTF8_STRING", "STRING", "TEXT"}) {
        const QString name = QString::fromLatin1(type);
        all.append({name, utf8, name, 8});
    }
    return all + historyHints();
}

bool WaylandPasteTransaction::own(const Content &content)
{
    m_clipboard.own(content);
    return true; // The compositor reports later if another program takes it at once.
}

void WaylandPasteTransaction::forgetTarget()
{
    m_target = {};
    m_style = PasteStyle::ControlV;
}

QCoro::Task<QList<PasteboardItem>> WaylandPasteTransaction::snapshot(std::shared_ptr<WaylandPasteTransaction> self)
{
    const auto idle = self->settled();
    co_await idle;
    self->beginIfDue();
    self->m_control->session().synchronise(); // Another program may have just taken the clipboard.
    Content all;
    if (self->holdsEarlier() && self->m_clipboard.isOwner()) {
        all = self->earlier().content().value_or(Content()); // A text that was not pasted is not the user's clipboard.
    } else {
        all = co_await readOrOwn(self, &self->m_clipboard, WaylandSelection::Clipboard);
    }
    self->earlier().forgetRequests();
    if (self->isPasting() && !self->m_ownsPrimaryForPaste && self->pastesPrimary(self->m_front())) {
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
    if (selection == WaylandSelection::Clipboard) {
        self->secret().noteContent(reading.representations);
    }
    co_return reading.representations;
}

bool WaylandPasteTransaction::pastesPrimary(const FrontApplication &front) const
{
    return !front.isKnown || pasteStyleFor(QString(), front.name) == PasteStyle::ShiftInsertPrimary;
}

PasteStyle WaylandPasteTransaction::chooseStyle(const FrontApplication &front)
{
    m_target = front;
    m_style = front.isKnown ? pasteStyleFor(QString(), front.name) : PasteStyle::ShiftInsertPrimary;
    if (m_style == PasteStyle::ShiftInsertPrimary && isPasting()) {
        m_primary.own(m_clipboard.content());
        m_ownsPrimaryForPaste = true;
    }
    return m_style;
}

void WaylandPasteTransaction::notePosted()
{
    m_postTime = now();
    if (m_target.isKnown && importsClipboard(QString(), m_target.name)) {
        policy().postToImporter(m_postTime);
    } else {
        policy().post(m_postTime, std::nullopt);
    }
    restoreIfDue();
}

void WaylandPasteTransaction::noteRead(const OwnedSelection::Read &read)
{
    if (isWithheld()) {
        // A clipboard manager reads as soon as the text is there; the user's own paste takes longer.
        if (read.time >= textTime() + RestorePolicy::readTime) {
            earlier().noteRequest(read.hasText);
        }
        return;
    }
    // A program that asked before the shortcut is not the one that pastes, however late the value reached it. Only the
    // one that imports the clipboard may have asked then.
    const bool isOfPaste = !policy().isPosted() || read.time >= m_postTime;
    // It is unknown who reads. A program that does so again and again must not keep the text on the clipboard.
    const bool isLater = policy().isRead() && now() >= m_readTime + longestReading;
    if (isOfPaste && !isLater) {
        const bool wasRead = policy().isRead();
        policy().noteRequest(now(), 0, read.hasText);
        if (!wasRead && policy().isRead()) {
            m_readTime = now();
        }
    }
    handleRead();
}

bool WaylandPasteTransaction::isHopeless(Time now) const
{
    return !policy().isPosted() && now >= textTime() + longestPosting;
}

void WaylandPasteTransaction::stand(const Content &content)
{
    if (content.isEmpty()) {
        m_clipboard.disown();
    } else {
        m_clipboard.own(content);
    }
}

void WaylandPasteTransaction::giveBackPrimary()
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

void WaylandPasteTransaction::handleConnectionLost()
{
    finishLoss();
    if (isUnderWay()) {
        refuse(Outcome::ClipboardLost);
    }
}

QFuture<void> WaylandPasteTransaction::ownershipLost()
{
    m_control->session().synchronise();
    const bool ownsClipboard = m_clipboard.isOwner() && !m_control->session().isBroken();
    return ownsClipboard ? loss() : makeReadyFuture();
}

} // namespace talmo
