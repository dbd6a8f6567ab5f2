#include "Platform/Linux/X11/Clipboard/SelectionReader.h"

#include "Base/Log.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <utility>

namespace talmo {

namespace {

const char *describe(SelectionReading::Loss loss)
{
    switch (loss) {
    case SelectionReading::Loss::OwnerTooSlow:
        return "its owner took too long";
    case SelectionReading::Loss::OwnerEnded:
        return "its owner exited";
    case SelectionReading::Loss::TooLarge:
        return "it is too large";
    case SelectionReading::Loss::Malformed:
        return "it is malformed";
    case SelectionReading::Loss::None:
        break;
    }
    return "";
}

} // namespace

struct SelectionReader::Conversion {
    xcb_atom_t property = XCB_ATOM_NONE;
    std::shared_ptr<Completion<Answer>> completion = Completion<Answer>::make();
    /// Set once the owner has announced an incremental transfer.
    std::unique_ptr<IncrementalValue> pieces;
};

SelectionReader::SelectionReader(XSession &session)
    : m_session(session)
{
    m_deadline.setSingleShot(true);
    m_deadline.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_deadline, &QTimer::timeout, &m_deadline, [this] { giveUp(Loss::OwnerTooSlow); });
    m_session.addEventHandler([this](const xcb_generic_event_t &event) { handleEvent(event); });
}

void SelectionReader::begin(xcb_atom_t selection, Timeout timeout)
{
    auto *connection = m_session.connection().get();
    m_owner = m_session.selectionOwner(selection);
    if (m_owner != XCB_NONE && m_owner != m_session.window()) {
        // If the owner exits in the middle of a value, the destruction of its window is the only sign.
        constexpr quint32 events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection, m_owner, XCB_CW_EVENT_MASK, &events);
    }
    m_timeout = timeout;
    m_end = std::chrono::steady_clock::now() + timeout.whole;
    m_ending = Loss::None;
    m_room = IncrementalValue::maximumSize;
    m_deadline.start(timeout.pause);
}

void SelectionReader::noteProgress()
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_end - std::chrono::steady_clock::now());
    m_deadline.start(std::clamp(left, std::chrono::milliseconds(0), m_timeout.pause));
}

QCoro::Task<SelectionReading> SelectionReader::read(xcb_atom_t selection, Timeout timeout)
{
    SelectionReading reading;
    const auto miss = [&reading](const QString &type, Loss loss, qsizetype size) {
        generalLog().error("the clipboard's %s was not kept (%s bytes received): %s",
                           {type, QString::number(size), QString::fromLatin1(describe(loss))});
        reading.loss = reading.loss == Loss::None ? loss : reading.loss;
    };
    begin(selection, timeout);
    const auto answer = convert(selection, m_session.connection().atom("TARGETS"));
    const Answer offered = co_await answer;
    if (offered.loss != Loss::None) {
        miss(QStringLiteral("list of types"), offered.loss, offered.size);
    }
    const auto targets = offered.value ? readableTargets(*offered.value) : SelectionTargets();
    if (targets.isTruncated) {
        miss(QStringLiteral("further types"), Loss::TooLarge, 0);
    }
    for (const xcb_atom_t target : targets.atoms) {
        const QString type = QString::fromLatin1(m_session.connection().atomName(target));
        if (type.isEmpty()) {
            continue;
        }
        if (m_ending != Loss::None) {
            miss(type, m_ending, 0);
            break;
        }
        const auto conversion = convert(selection, target);
        const Answer given = co_await conversion;
        if (given.value) {
            const QByteArray encoding = m_session.connection().atomName(given.value->type);
            m_room -= given.value->data.size();
            reading.representations.append(
                {type, given.value->data, QString::fromLatin1(encoding), given.value->unitBits});
        } else if (given.loss != Loss::None) {
            miss(type, given.loss, given.size);
        }
    }
    m_deadline.stop();
    m_owner = XCB_NONE;
    co_return reading;
}

QCoro::Task<void> SelectionReader::ask(xcb_atom_t selection, QByteArray target, Timeout timeout)
{
    begin(selection, timeout);
    const auto answer = convert(selection, m_session.connection().atom(target));
    co_await answer;
    m_deadline.stop();
}

SelectionTargets SelectionReader::readableTargets(const SelectionValue &targets)
{
    static constexpr std::array names = {"TARGETS", "MULTIPLE",         "TIMESTAMP",      "SAVE_TARGETS",
                                         "DELETE",  "INSERT_SELECTION", "INSERT_PROPERTY"};
    std::vector<xcb_atom_t> excluded;
    excluded.reserve(names.size());
    for (const char *name : names) {
        excluded.push_back(m_session.connection().atom(name));
    }
    return SelectionTargets::parse(targets.data, targets.unitBits, excluded);
}

QFuture<SelectionReader::Answer> SelectionReader::convert(xcb_atom_t selection, xcb_atom_t target)
{
    auto conversion = std::make_shared<Conversion>();
    auto &connection = m_session.connection();
    // The last few conversions use different property names, so that a late reply is not taken for another one's.
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
    case XCB_DESTROY_NOTIFY:
        if (m_owner != XCB_NONE &&
            reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window == m_owner) { // NOLINT
            giveUp(Loss::OwnerEnded);
        }
        break;
    default:
        break;
    }
}

void SelectionReader::handleNotify(const xcb_selection_notify_event_t &event)
{
    if (event.property == XCB_ATOM_NONE) {
        // A refusal does not name its property; but conversions run one at a time.
        if (!m_conversions.empty()) {
            finish(m_conversions.front(), {});
        }
        return;
    }
    const auto conversion = findConversion(event.property);
    auto answer = takeProperty(event.property);
    if (!conversion) {
        return; // Too late; taking the property has cleaned up.
    }
    noteProgress();
    if (answer.value && answer.value->type == m_session.connection().atom("INCR")) {
        // Deleting the property tells the owner to begin.
        conversion->pieces = std::make_unique<IncrementalValue>(m_room);
        return;
    }
    finish(conversion, std::move(answer));
}

void SelectionReader::handleProperty(const xcb_property_notify_event_t &event)
{
    if (event.state != XCB_PROPERTY_NEW_VALUE || event.window != m_session.window()) {
        return;
    }
    const auto conversion = findConversion(event.atom);
    IncrementalValue *const pieces = conversion ? conversion->pieces.get() : nullptr;
    if (pieces == nullptr) {
        return;
    }
    const qsizetype before = pieces->size();
    const auto piece = takeProperty(event.atom);
    if (!piece.value) {
        finish(conversion, {std::nullopt, piece.loss == Loss::None ? Loss::Malformed : piece.loss, before});
        return;
    }
    noteProgress();
    switch (pieces->append(*piece.value)) {
    case IncrementalValue::State::Incomplete:
        break;
    case IncrementalValue::State::Complete:
        finish(conversion, {pieces->take(), Loss::None, before});
        break;
    case IncrementalValue::State::TooLarge:
        finish(conversion, {std::nullopt, Loss::TooLarge, before});
        break;
    case IncrementalValue::State::Malformed:
        finish(conversion, {std::nullopt, Loss::Malformed, before});
        break;
    }
}

/// Reads and deletes the property; the deletion tells the owner that the piece has arrived.
SelectionReader::Answer SelectionReader::takeProperty(xcb_atom_t property)
{
    auto *connection = m_session.connection().get();
    const auto room = static_cast<quint32>(std::max<qsizetype>(m_room, 4096) / 4);
    const auto cookie =
        xcb_get_property(connection, 1, m_session.window(), property, XCB_GET_PROPERTY_TYPE_ANY, 0, room);
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE) {
        return {};
    }
    if (reply->bytes_after > 0) {
        xcb_delete_property(connection, m_session.window(), property);
        return {std::nullopt, Loss::TooLarge, static_cast<qsizetype>(reply->bytes_after)};
    }
    const auto *bytes = static_cast<const char *>(xcb_get_property_value(reply.get()));
    const int size = xcb_get_property_value_length(reply.get());
    return {SelectionValue{QByteArray(bytes, size), reply->type, reply->format}, Loss::None, size};
}

std::shared_ptr<SelectionReader::Conversion> SelectionReader::findConversion(xcb_atom_t property) const
{
    const auto found = std::find_if(m_conversions.begin(), m_conversions.end(),
                                    [property](const auto &conversion) { return conversion->property == property; });
    return found != m_conversions.end() ? *found : nullptr;
}

/// Takes the conversion by value, since the caller's reference may be to the element that is erased.
void SelectionReader::finish(std::shared_ptr<Conversion> conversion, Answer answer)
{
    std::erase(m_conversions, conversion);
    conversion->completion->finish(std::move(answer));
}

void SelectionReader::giveUp(Loss loss)
{
    m_ending = loss;
    while (!m_conversions.empty()) {
        const auto &conversion = m_conversions.front();
        finish(conversion, {std::nullopt, loss, conversion->pieces ? conversion->pieces->size() : 0});
    }
}

} // namespace talmo
