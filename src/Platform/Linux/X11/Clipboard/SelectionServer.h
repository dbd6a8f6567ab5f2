#pragma once

#include "Insertion/Pasteboard.h"
#include "Platform/Linux/X11/XSession.h"

#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace talmo {

/// Owns one selection and serves it to other clients. The X session's thread only.
class SelectionServer {
public:
    struct Request {
        quint32 client; ///< See XConnection::clientOf().
        bool wantsData; ///< False if it asked only for the list of targets.
        bool wasServed;
    };

    SelectionServer(XSession &session, const QByteArray &selectionName);
    ~SelectionServer();
    SelectionServer(const SelectionServer &) = delete;
    SelectionServer &operator=(const SelectionServer &) = delete;

    xcb_atom_t selection() const { return m_selection; }
    bool isOwner() const { return m_isOwner; }
    const QList<PasteboardRepresentation> &content() const { return m_content; }

    /// Takes the selection and serves this content from then on. False if the server gave the selection to another
    /// client.
    bool own(QList<PasteboardRepresentation> content);
    /// Releases the selection if Talmo still owns it.
    void disown();
    /// Serves this content to one client instead of the common content, as long as Talmo owns the selection: that
    /// client's paste is still pending. Its requests may be as old as that paste.
    void owe(quint32 client, QList<PasteboardRepresentation> content) { m_owed[client] = std::move(content); }
    void settleDebt(quint32 client) { m_owed.erase(client); }

    /// Called after every request that was answered.
    void setOnRequest(std::function<void(const Request &)> callback) { m_onRequest = std::move(callback); }
    /// Called when another program has taken the selection.
    void setOnLost(std::function<void()> callback) { m_onLost = std::move(callback); }
    /// True while a large value is still being sent in pieces.
    bool isSending() const { return !m_transfers.empty(); }

private:
    struct Transfer;

    void handleEvent(const xcb_generic_event_t &event);
    void handleRequest(const xcb_selection_request_event_t &request);
    void handleClear(const xcb_selection_clear_event_t &event);
    bool isInTime(const xcb_selection_request_event_t &request) const;
    const QList<PasteboardRepresentation> &contentFor(quint32 client) const;
    bool answer(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    bool answerMultiple(xcb_window_t requestor, xcb_atom_t property);
    void answerTargets(xcb_window_t requestor, xcb_atom_t property);
    const PasteboardRepresentation *find(quint32 client, xcb_atom_t target);
    void beginTransfer(xcb_window_t requestor, xcb_atom_t property, const PasteboardRepresentation &value);
    void sendNextPiece(const xcb_property_notify_event_t &event);
    void forgetStaleTransfers();

    XSession &m_session;
    xcb_atom_t m_selection;
    bool m_isOwner = false;
    xcb_timestamp_t m_ownedSince = XCB_CURRENT_TIME;
    QList<PasteboardRepresentation> m_content;
    std::map<quint32, QList<PasteboardRepresentation>> m_owed;
    std::vector<Transfer> m_transfers;
    QTimer m_staleness;
    std::function<void(const Request &)> m_onRequest;
    std::function<void()> m_onLost;
};

/// Server timestamps count milliseconds in 32 bits and wrap around every 49.7 days.
inline bool isBefore(xcb_timestamp_t time, xcb_timestamp_t other)
{
    return static_cast<qint32>(time - other) < 0;
}

/// A text in all the types that programs ask for.
QList<PasteboardRepresentation> textRepresentations(const QString &text);

} // namespace talmo
