#include "Platform/Linux/X11/Clipboard/SelectionServer.h"

#include "Platform/Linux/Session/ClipboardHints.h"
#include "Platform/Linux/X11/Clipboard/SelectionTargets.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace talmo {

namespace {

/// The largest value sent in one property; larger ones are sent in pieces, since not every server accepts such
/// requests.
constexpr qsizetype pieceSize = qsizetype(128) << 10;
/// After this time, a reader that stops reading in the middle of a value is dropped.
constexpr auto transferTimeout = std::chrono::seconds(5);

const char *rawData(const QByteArray &data, qsizetype offset = 0)
{
    return data.constData() + offset;
}

} // namespace

struct SelectionServer::Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    xcb_atom_t type;
    int unitBits;
    QByteArray data;
    qsizetype sent = 0;
    bool isEndSent = false;
    std::chrono::steady_clock::time_point lastStep;
};

QList<PasteboardRepresentation> textRepresentations(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    const QString utf8String = QStringLiteral("UTF8_STRING");
    QList<PasteboardRepresentation> all = {
        {utf8String, utf8, utf8String, 8},
        {QStringLiteral("text/plain;charset=utf-8"), utf8, QStringLiteral("text/plain;charset=utf-8"), 8},
        {QStringLiteral("text/plain"), utf8, QStringLiteral("text/plain"), 8},
        {QStringLiteral("TEXT"), utf8, utf8String, 8},
    };
    all += historyHints();
    const bool isLatin1 =
        std::all_of(text.cbegin(), text.cend(), [](QChar character) { return character.unicode() < 0x100; });
    if (isLatin1) {
        all.insert(1, {QStringLiteral("STRING"), text.toLatin1(), QStringLiteral("STRING"), 8});
    }
    return all;
}

SelectionServer::SelectionServer(XSession &session, const QByteArray &selectionName)
    : m_session(session),
      m_selection(session.connection().atom(selectionName))
{
    m_staleness.setSingleShot(true);
    QObject::connect(&m_staleness, &QTimer::timeout, &m_staleness, [this] { forgetStaleTransfers(); });
    m_session.addEventHandler([this](const xcb_generic_event_t &event) { handleEvent(event); });
}

SelectionServer::~SelectionServer() = default;

bool SelectionServer::own(QList<PasteboardRepresentation> content)
{
    m_content = std::move(content);
    auto *connection = m_session.connection().get();
    constexpr int tries = 2; // A claim can lose to another one with the same timestamp.
    m_isOwner = false;
    for (int count = 0; count < tries && !m_isOwner; ++count) {
        m_ownedSince = m_session.serverTime();
        xcb_set_selection_owner(connection, m_session.window(), m_selection, m_ownedSince);
        m_isOwner = m_session.selectionOwner(m_selection) == m_session.window();
    }
    m_session.flush();
    return m_isOwner;
}

void SelectionServer::disown()
{
    if (m_isOwner) {
        xcb_set_selection_owner(m_session.connection().get(), XCB_NONE, m_selection, m_session.serverTime());
    }
    m_isOwner = false;
    m_content.clear();
    m_session.flush();
}

void SelectionServer::handleEvent(const xcb_generic_event_t &event)
{
    switch (event.response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
        handleRequest(reinterpret_cast<const xcb_selection_request_event_t &>(event)); // NOLINT
        break;
    case XCB_SELECTION_CLEAR:
        handleClear(reinterpret_cast<const xcb_selection_clear_event_t &>(event)); // NOLINT
        break;
    case XCB_PROPERTY_NOTIFY:
        sendNextPiece(reinterpret_cast<const xcb_property_notify_event_t &>(event)); // NOLINT
        break;
    default:
        break;
    }
}

void SelectionServer::handleClear(const xcb_selection_clear_event_t &event)
{
    // An event caused by Talmo's own taking or releasing has an older timestamp.
    if (event.selection != m_selection || !m_isOwner || isBefore(event.time, m_ownedSince)) {
        return;
    }
    if (m_session.selectionOwner(m_selection) == m_session.window()) {
        return;
    }
    m_isOwner = false;
    m_content.clear();
    if (m_onLost) {
        m_onLost();
    }
}

void SelectionServer::handleRequest(const xcb_selection_request_event_t &request)
{
    if (request.selection != m_selection) {
        return;
    }
    auto &connection = m_session.connection();
    // Obsolete clients let the owner choose the property.
    const xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    const bool isMultiple = request.target == connection.atom("MULTIPLE");
    bool wasServed = false;
    if (m_isOwner && isInTime(request)) {
        wasServed = isMultiple ? answerMultiple(request.requestor, property)
                               : answer(request.requestor, request.target, property);
    }
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = wasServed ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    // Events are 32 bytes long on the wire, whatever the struct's size.
    std::array<char, 32> wire{};
    static_assert(sizeof(notify) <= wire.size());
    std::memcpy(wire.data(), &notify, sizeof(notify));
    xcb_send_event(connection.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
    connection.flush();
    if (m_onRequest) {
        const bool isProtocol =
            request.target == connection.atom("TARGETS") || request.target == connection.atom("TIMESTAMP");
        m_onRequest({connection.clientOf(request.requestor), !isProtocol, wasServed});
    }
}

bool SelectionServer::isInTime(const xcb_selection_request_event_t &request) const
{
    return request.time == XCB_CURRENT_TIME || !isBefore(request.time, m_ownedSince) ||
           m_owed.contains(m_session.connection().clientOf(request.requestor));
}

const QList<PasteboardRepresentation> &SelectionServer::contentFor(quint32 client) const
{
    const auto owed = m_owed.find(client);
    return owed != m_owed.end() ? owed->second : m_content;
}

bool SelectionServer::answer(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property)
{
    auto &connection = m_session.connection();
    if (target == connection.atom("TARGETS")) {
        answerTargets(requestor, property);
        return true;
    }
    if (target == connection.atom("TIMESTAMP")) {
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_INTEGER, 32, 1,
                            &m_ownedSince);
        return true;
    }
    if (target == connection.atom("SAVE_TARGETS")) {
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, connection.atom("NULL"), 32,
                            0, nullptr);
        return true;
    }
    const auto *value = find(connection.clientOf(requestor), target);
    if (value == nullptr) {
        return false;
    }
    if (value->data.size() > pieceSize) {
        beginTransfer(requestor, property, *value);
        return true;
    }
    const auto unitBytes = std::max(1, value->nativeUnitBits / 8);
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, requestor, property,
                        connection.atom(value->nativeEncoding.toLatin1()), static_cast<quint8>(value->nativeUnitBits),
                        static_cast<quint32>(value->data.size() / unitBytes), rawData(value->data));
    return true;
}

void SelectionServer::answerTargets(xcb_window_t requestor, xcb_atom_t property)
{
    auto &connection = m_session.connection();
    std::vector<xcb_atom_t> targets = {connection.atom("TARGETS"), connection.atom("MULTIPLE"),
                                       connection.atom("TIMESTAMP"), connection.atom("SAVE_TARGETS")};
    for (const auto &representation : contentFor(connection.clientOf(requestor))) {
        targets.push_back(connection.atom(representation.type.toLatin1()));
    }
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_ATOM, 32,
                        static_cast<quint32>(targets.size()), targets.data());
}

/// The property holds pairs of target and property; in the answer, those that cannot be converted have no property.
bool SelectionServer::answerMultiple(xcb_window_t requestor, xcb_atom_t property)
{
    auto &connection = m_session.connection();
    constexpr quint32 mostAtoms = 1024;
    const auto cookie =
        xcb_get_property(connection.get(), 0, requestor, property, XCB_GET_PROPERTY_TYPE_ANY, 0, mostAtoms);
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(), cookie, nullptr));
    if (!reply || reply->format != 32) {
        return false;
    }
    const auto *atoms = static_cast<const xcb_atom_t *>(xcb_get_property_value(reply.get()));
    const auto pairs = serveMultiple(
        std::vector<xcb_atom_t>(atoms, atoms + reply->value_len), connection.atom("MULTIPLE"),
        [&](xcb_atom_t target, xcb_atom_t pairProperty) { return answer(requestor, target, pairProperty); });
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, connection.atom("ATOM_PAIR"), 32,
                        static_cast<quint32>(pairs.size()), pairs.data());
    return true;
}

const PasteboardRepresentation *SelectionServer::find(quint32 client, xcb_atom_t target)
{
    const QString name = QString::fromLatin1(m_session.connection().atomName(target));
    const auto &content = contentFor(client);
    const auto found = std::find_if(content.cbegin(), content.cend(),
                                    [&name](const auto &representation) { return representation.type == name; });
    return found != content.cend() ? &*found : nullptr;
}

void SelectionServer::beginTransfer(xcb_window_t requestor, xcb_atom_t property, const PasteboardRepresentation &value)
{
    auto &connection = m_session.connection();
    constexpr quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection.get(), requestor, XCB_CW_EVENT_MASK, &events);
    const auto lowerBound = static_cast<quint32>(value.data.size());
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, connection.atom("INCR"), 32, 1,
                        &lowerBound);
    m_transfers.push_back({requestor, property, connection.atom(value.nativeEncoding.toLatin1()), value.nativeUnitBits,
                           value.data, 0, false, std::chrono::steady_clock::now()});
    m_staleness.start(transferTimeout);
}

/// The reader deletes the property once it has read it, which requests the next piece. An empty one ends the transfer.
void SelectionServer::sendNextPiece(const xcb_property_notify_event_t &event)
{
    if (event.state != XCB_PROPERTY_DELETE) {
        return;
    }
    const auto found = std::find_if(m_transfers.begin(), m_transfers.end(), [&event](const Transfer &transfer) {
        return transfer.requestor == event.window && transfer.property == event.atom;
    });
    if (found == m_transfers.end()) {
        return;
    }
    if (found->isEndSent) {
        m_transfers.erase(found);
        return;
    }
    const auto unitBytes = std::max(1, found->unitBits / 8);
    const auto size = std::min(pieceSize, found->data.size() - found->sent);
    xcb_change_property(m_session.connection().get(), XCB_PROP_MODE_REPLACE, found->requestor, found->property,
                        found->type, static_cast<quint8>(found->unitBits), static_cast<quint32>(size / unitBytes),
                        rawData(found->data, found->sent));
    found->sent += size;
    found->isEndSent = size == 0;
    found->lastStep = std::chrono::steady_clock::now();
    m_session.connection().flush();
}

void SelectionServer::forgetStaleTransfers()
{
    const auto oldest = std::chrono::steady_clock::now() - transferTimeout;
    std::erase_if(m_transfers, [oldest](const Transfer &transfer) { return transfer.lastStep <= oldest; });
    if (!m_transfers.empty()) {
        m_staleness.start(transferTimeout);
    }
}

} // namespace talmo
