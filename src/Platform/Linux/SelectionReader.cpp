#include "Platform/Linux/SelectionReader.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace talmo {

namespace {

/// A clipboard beyond this is not copied: taking the machine's memory is no way to give it back.
constexpr qsizetype largestValue = qsizetype(256) << 20;

bool isProtocolOrSideEffect(const QByteArray &target)
{
    static constexpr std::array<const char *, 7> names = {
        "TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE", "INSERT_SELECTION", "INSERT_PROPERTY"};
    return std::any_of(names.begin(), names.end(), [&target](const char *name) { return target == name; });
}

} // namespace

struct SelectionReader::Conversion {
    xcb_atom_t property = XCB_ATOM_NONE;
    std::shared_ptr<Completion<std::optional<Value>>> completion = Completion<std::optional<Value>>::make();
    /// Set once the owner has announced that it sends piece by piece.
    std::unique_ptr<Value> pieces;
};

SelectionReader::SelectionReader(XSession &session)
    : m_session(session)
{
    m_deadline.setSingleShot(true);
    m_deadline.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_deadline, &QTimer::timeout, &m_deadline, [this] { giveUp(); });
    m_session.addEventHandler([this](const xcb_generic_event_t &event) { handleEvent(event); });
}

QCoro::Task<QList<PasteboardRepresentation>> SelectionReader::read(xcb_atom_t selection,
                                                                   std::chrono::milliseconds patience)
{
    QList<PasteboardRepresentation> representations;
    m_isOverdue = false;
    m_deadline.start(patience);
    const auto targets = co_await convert(selection, m_session.connection().atom("TARGETS"));
    if (targets) {
        for (const xcb_atom_t target : readableTargets(*targets)) {
            if (m_isOverdue) {
                break;
            }
            const auto value = co_await convert(selection, target);
            if (value) {
                auto &connection = m_session.connection();
                representations.append({QString::fromLatin1(connection.atomName(target)), value->data,
                                        QString::fromLatin1(connection.atomName(value->type)), value->unitBits});
            }
        }
    }
    m_deadline.stop();
    co_return representations;
}

QCoro::Task<void> SelectionReader::ask(xcb_atom_t selection, QByteArray target, std::chrono::milliseconds patience)
{
    m_isOverdue = false;
    m_deadline.start(patience);
    co_await convert(selection, m_session.connection().atom(target));
    m_deadline.stop();
}

QList<xcb_atom_t> SelectionReader::readableTargets(const Value &targets)
{
    QList<xcb_atom_t> readable;
    if (targets.unitBits != 32) {
        return readable;
    }
    const auto count = targets.data.size() / static_cast<qsizetype>(sizeof(xcb_atom_t));
    for (qsizetype index = 0; index < count; ++index) {
        xcb_atom_t target = XCB_ATOM_NONE;
        std::memcpy(&target, targets.data.constData() + index * static_cast<qsizetype>(sizeof(target)), sizeof(target));
        const QByteArray name = target == XCB_ATOM_NONE ? QByteArray() : m_session.connection().atomName(target);
        if (!name.isEmpty() && !isProtocolOrSideEffect(name) && !readable.contains(target)) {
            readable.append(target);
        }
    }
    return readable;
}

QFuture<std::optional<SelectionReader::Value>> SelectionReader::convert(xcb_atom_t selection, xcb_atom_t target)
{
    auto conversion = std::make_shared<Conversion>();
    auto &connection = m_session.connection();
    // A name of its own for each of the last few, so that a late answer is not taken for another one's.
    constexpr unsigned nameCount = 64;
    conversion->property = connection.atom("TALMO_VALUE_" + QByteArray::number(m_counter++ % nameCount));
    m_conversions.push_back(conversion);
    xcb_delete_property(connection.get(), m_session.window(), conversion->property);
    xcb_convert_selection(connection.get(), m_session.window(), selection, target, conversion->property,
                          XCB_CURRENT_TIME);
    auto future = conversion->completion->future();
    m_session.flush();
    return future;
}

void SelectionReader::handleEvent(const xcb_generic_event_t &event)
{
    switch (event.response_type & 0x7f) {
    case XCB_SELECTION_NOTIFY:
        handleNotify(reinterpret_cast<const xcb_selection_notify_event_t &>(event)); // NOLINT
        break;
    case XCB_PROPERTY_NOTIFY:
        handleProperty(reinterpret_cast<const xcb_property_notify_event_t &>(event)); // NOLINT
        break;
    default:
        break;
    }
}

void SelectionReader::handleNotify(const xcb_selection_notify_event_t &event)
{
    if (event.property == XCB_ATOM_NONE) {
        // A refusal does not say which property it is for; they are asked one after the other.
        if (!m_conversions.empty()) {
            finish(m_conversions.front(), std::nullopt);
        }
        return;
    }
    const auto conversion = findConversion(event.property);
    auto value = takeProperty(event.property);
    if (!conversion) {
        return; // Too late; taking the property has cleaned up.
    }
    if (value && value->type == m_session.connection().atom("INCR")) {
        conversion->pieces = std::make_unique<Value>(); // Having deleted the property tells the owner to begin.
        return;
    }
    finish(conversion, std::move(value));
}

void SelectionReader::handleProperty(const xcb_property_notify_event_t &event)
{
    if (event.state != XCB_PROPERTY_NEW_VALUE || event.window != m_session.window()) {
        return;
    }
    const auto conversion = findConversion(event.atom);
    Value *const pieces = conversion ? conversion->pieces.get() : nullptr;
    if (pieces == nullptr) {
        return;
    }
    const auto piece = takeProperty(event.atom);
    if (!piece || pieces->data.size() + piece->data.size() > largestValue) {
        finish(conversion, std::nullopt);
        return;
    }
    if (piece->data.isEmpty()) {
        finish(conversion, std::move(*pieces));
        return;
    }
    pieces->type = piece->type;
    pieces->unitBits = piece->unitBits;
    pieces->data += piece->data;
}

/// Reads the property and deletes it, which is also how the owner learns that the piece has arrived.
std::optional<SelectionReader::Value> SelectionReader::takeProperty(xcb_atom_t property)
{
    auto *connection = m_session.connection().get();
    constexpr quint32 everything = largestValue / 4;
    const auto cookie =
        xcb_get_property(connection, 1, m_session.window(), property, XCB_GET_PROPERTY_TYPE_ANY, 0, everything);
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE || reply->bytes_after > 0) {
        return std::nullopt;
    }
    const auto *bytes = static_cast<const char *>(xcb_get_property_value(reply.get()));
    return Value{QByteArray(bytes, xcb_get_property_value_length(reply.get())), reply->type, reply->format};
}

std::shared_ptr<SelectionReader::Conversion> SelectionReader::findConversion(xcb_atom_t property) const
{
    const auto found = std::find_if(m_conversions.begin(), m_conversions.end(),
                                    [property](const auto &conversion) { return conversion->property == property; });
    return found != m_conversions.end() ? *found : nullptr;
}

/// Takes the conversion by value: what the caller names may be the very element that goes.
void SelectionReader::finish(std::shared_ptr<Conversion> conversion, std::optional<Value> value)
{
    std::erase(m_conversions, conversion);
    conversion->completion->finish(std::move(value));
}

void SelectionReader::giveUp()
{
    m_isOverdue = true;
    while (!m_conversions.empty()) {
        finish(m_conversions.front(), std::nullopt);
    }
}

} // namespace talmo
