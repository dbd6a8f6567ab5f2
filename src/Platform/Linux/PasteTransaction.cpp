#include "Platform/Linux/PasteTransaction.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

/// How long the owner of the clipboard may take to hand over all it has.
constexpr auto snapshotPatience = 500ms;
/// Some programs fetch twice, some 20 ms apart; giving the clipboard back in between has brought one down.
constexpr auto quietTime = 120ms;
/// A program that has not fetched the text by then never will.
constexpr auto longestRestoreDelay = 1500ms;

QList<PasteboardRepresentation> flattened(const QList<PasteboardItem> &items)
{
    QList<PasteboardRepresentation> all;
    for (const auto &item : items) {
        all += item.representations;
    }
    return all;
}

} // namespace

PasteTransaction::PasteTransaction(XSession &session)
    : m_session(session),
      m_clipboard(session, "CLIPBOARD"),
      m_primary(session, "PRIMARY"),
      m_reader(session)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { evaluate(); });
    const auto onRequest = [this](const SelectionServer::Request &request) { handleRequest(request); };
    m_clipboard.setOnRequest(onRequest);
    m_primary.setOnRequest(onRequest);
    m_clipboard.setOnLost([this] { handleLost(); });
    m_session.setOnConnectionLost([this] { relieve(); });
}

PasteTransaction::~PasteTransaction()
{
    // The parts of this were the session's only listeners; events may still come until it ends.
    m_session.removeEventHandlers();
}

void PasteTransaction::begin()
{
    m_beginsAfterRestore = m_restore.has_value();
    if (!m_beginsAfterRestore) {
        m_isPasting = true;
        m_isChordPosted = false;
    }
}

QCoro::Task<QList<PasteboardItem>> PasteTransaction::snapshot(std::shared_ptr<PasteTransaction> self)
{
    co_await self->settled();
    if (std::exchange(self->m_beginsAfterRestore, false)) {
        self->begin();
    }
    self->m_session.synchronise(); // Another program may have just taken the clipboard.
    QList<PasteboardRepresentation> all;
    if (self->m_clipboard.isOwner()) {
        all = self->m_clipboard.content();
    } else {
        all = co_await self->m_reader.read(self->clipboard(), snapshotPatience);
    }
    self->m_primarySnapshot.clear();
    const bool takesPrimary =
        self->m_isPasting && self->styleOfFocus(self->m_session.focusWindow()) == PasteStyle::ShiftInsertPrimary;
    if (takesPrimary && self->m_primary.isOwner()) {
        self->m_primarySnapshot = self->m_primary.content();
    } else if (takesPrimary) {
        self->m_primarySnapshot = co_await self->m_reader.read(self->m_primary.selection(), snapshotPatience);
    }
    co_return all.isEmpty() ? QList<PasteboardItem>() : QList<PasteboardItem>{PasteboardItem{all}};
}

void PasteTransaction::clear()
{
    if (m_isPasting && m_isChordPosted) {
        m_restore = QList<PasteboardRepresentation>();
    } else if (!m_isPasting) {
        m_clipboard.disown();
    }
    // In a paste before its chord the text follows at once. An empty clipboard in between would only call clipboard
    // managers into action that want to fill it.
}

void PasteTransaction::setString(const QString &text)
{
    m_wasLost = false;
    m_clipboard.own(textRepresentations(text));
}

void PasteTransaction::writeItems(const QList<PasteboardItem> &items)
{
    if (m_isPasting && m_isChordPosted) {
        m_restore = flattened(items);
    } else {
        m_clipboard.own(flattened(items));
    }
}

PasteStyle PasteTransaction::beginChord()
{
    const auto focus = m_session.focusWindow();
    const auto style = styleOfFocus(focus);
    m_target.reset();
    if (focus != XCB_NONE) {
        m_target = m_session.connection().clientOf(focus);
    }
    m_isChordPosted = m_isPasting;
    m_wasFetched = false;
    if (style == PasteStyle::ShiftInsertPrimary && m_isPasting) {
        m_primary.own(m_clipboard.content());
        m_ownsPrimaryForPaste = true;
    }
    return style;
}

/// By the first window on the way up that says what program it belongs to: the keyboard may be in an inner one.
PasteStyle PasteTransaction::styleOfFocus(xcb_window_t focus)
{
    auto *connection = m_session.connection().get();
    constexpr int deepestNesting = 12;
    for (int depth = 0; depth < deepestNesting && focus != XCB_NONE; ++depth) {
        const auto cookie = xcb_get_property(connection, 0, focus, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256);
        const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
        if (reply && xcb_get_property_value_length(reply.get()) > 0) {
            const QByteArray both(static_cast<const char *>(xcb_get_property_value(reply.get())),
                                  xcb_get_property_value_length(reply.get()));
            const auto halves = both.split('\0');
            return pasteStyleFor(QString::fromLatin1(halves.value(0)), QString::fromLatin1(halves.value(1)));
        }
        const XcbPtr<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection, xcb_query_tree(connection, focus), nullptr));
        focus = tree ? tree->parent : static_cast<xcb_window_t>(XCB_NONE);
    }
    return PasteStyle::ControlV;
}

void PasteTransaction::end()
{
    m_isPasting = false;
    if (!m_restore) {
        return; // Cut short: the text stays where it is.
    }
    if (m_wasLost) {
        applyRestore(); // Somebody wrote during the paste; the user's own clipboard comes back all the same.
        return;
    }
    m_restoreDeadline = std::chrono::steady_clock::now() + longestRestoreDelay;
    evaluate();
}

void PasteTransaction::handleRequest(const SelectionServer::Request &request)
{
    const bool counts = m_isChordPosted && (!m_target || request.client == *m_target);
    if (!counts) {
        return;
    }
    m_lastRequest = std::chrono::steady_clock::now();
    m_wasFetched = m_wasFetched || (request.wantsData && request.wasServed);
    evaluate();
}

void PasteTransaction::relieve()
{
    for (const auto &waiting : std::exchange(m_waitingForRelief, {})) {
        waiting->finish();
    }
}

QFuture<void> PasteTransaction::relieved()
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    m_session.synchronise();
    if (m_clipboard.isOwner() && !m_session.connection().isBroken()) {
        m_waitingForRelief.push_back(std::move(completion));
    } else {
        completion->finish();
    }
    return future;
}

void PasteTransaction::handleLost()
{
    relieve();
    if (m_isPasting) {
        m_wasLost = true;
    } else if (m_restore) {
        // Written after the restore was called for: what the user copied meanwhile is the newest.
        m_restore.reset();
        applyRestore();
    }
}

void PasteTransaction::evaluate()
{
    if (!m_restore || m_isPasting) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    const auto quietSince = m_lastRequest + quietTime;
    const bool isRead = m_wasFetched && now >= quietSince && !m_clipboard.isSending() && !m_primary.isSending();
    if (isRead || now >= m_restoreDeadline) {
        applyRestore();
        return;
    }
    // Looked at again when it may be quiet at the earliest; nothing runs once the restore is done.
    const auto wanted = m_wasFetched ? std::max(quietSince, now + 10ms) : m_restoreDeadline;
    const auto next = std::min(m_restoreDeadline, wanted);
    m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(next - now));
}

void PasteTransaction::applyRestore()
{
    m_timer.stop();
    m_isChordPosted = false;
    const auto restore = std::exchange(m_restore, std::nullopt);
    if (restore && restore->isEmpty()) {
        m_clipboard.disown();
    } else if (restore) {
        m_clipboard.own(*restore);
    }
    if (std::exchange(m_ownsPrimaryForPaste, false) && m_primary.isOwner()) {
        if (m_primarySnapshot.isEmpty()) {
            m_primary.disown();
        } else {
            m_primary.own(m_primarySnapshot);
        }
    }
    for (const auto &waiting : std::exchange(m_waiting, {})) {
        waiting->finish();
    }
}

QFuture<void> PasteTransaction::settled()
{
    auto completion = Completion<void>::make();
    auto future = completion->future();
    if (m_restore) {
        m_waiting.push_back(std::move(completion));
    } else {
        completion->finish();
    }
    return future;
}

QCoro::Task<void> PasteTransaction::shutDown(std::shared_ptr<PasteTransaction> self)
{
    // A paste that was under way never ends now; what it had saved still comes back.
    self->end();
    co_await self->settled();
    if (self->m_clipboard.isOwner()) {
        co_await self->m_reader.ask(self->m_session.connection().atom("CLIPBOARD_MANAGER"), "SAVE_TARGETS",
                                    snapshotPatience);
    }
}

} // namespace talmo
