#pragma once

#include "Platform/Linux/PasteChord.h"
#include "Platform/Linux/SelectionReader.h"
#include "Platform/Linux/SelectionServer.h"
#include "Platform/Linux/XSession.h"

#include <QCoro/QCoroTask>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace talmo {

/// The clipboard's side of a paste: what stands there, what is to stand there again, and when. A restore takes effect
/// once the program in front has fetched the text and has been quiet for a while: restored earlier, a slow program
/// pastes what was there before. The X session's thread only.
class PasteTransaction {
public:
    explicit PasteTransaction(XSession &session);
    ~PasteTransaction();
    PasteTransaction(const PasteTransaction &) = delete;
    PasteTransaction &operator=(const PasteTransaction &) = delete;

    void begin();
    void end();
    /// Waits for a pending restore first.
    static QCoro::Task<QList<PasteboardItem>> snapshot(std::shared_ptr<PasteTransaction> self);
    void clear();
    void setString(const QString &text);
    void writeItems(const QList<PasteboardItem> &items);

    /// The chord is about to be posted: from now on the reads of the program in front count. Gives back its style.
    PasteStyle beginChord();

    QFuture<void> settled();
    /// Finishes once nothing of ours stands on the clipboard: another program has taken it, or there is no server.
    QFuture<void> relieved();
    /// Waits for a pending restore, then hands what Talmo holds to the desktop's clipboard manager, if there is one.
    static QCoro::Task<void> shutDown(std::shared_ptr<PasteTransaction> self);

private:
    void handleRequest(const SelectionServer::Request &request);
    void handleLost();
    void relieve();
    void evaluate();
    void applyRestore();
    PasteStyle styleOfFocus(xcb_window_t focus);
    xcb_atom_t clipboard() const { return m_clipboard.selection(); }

    XSession &m_session;
    SelectionServer m_clipboard;
    SelectionServer m_primary;
    SelectionReader m_reader;

    bool m_isPasting = false;
    bool m_beginsAfterRestore = false;
    /// A chord was posted in this paste.
    bool m_isChordPosted = false;
    /// The client that has the keyboard; none when nobody knows, and then anybody's reads count.
    std::optional<quint32> m_target;
    bool m_wasFetched = false;
    std::chrono::steady_clock::time_point m_lastRequest;
    bool m_wasLost = false;

    QList<PasteboardRepresentation> m_primarySnapshot;
    bool m_ownsPrimaryForPaste = false;

    std::optional<QList<PasteboardRepresentation>> m_restore;
    std::chrono::steady_clock::time_point m_restoreDeadline;
    QTimer m_timer;
    std::vector<std::shared_ptr<Completion<void>>> m_waiting;
    std::vector<std::shared_ptr<Completion<void>>> m_waitingForRelief;
};

} // namespace talmo
