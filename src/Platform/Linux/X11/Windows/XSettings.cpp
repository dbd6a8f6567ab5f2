#include "Platform/Linux/X11/Windows/XSettings.h"

#include "Platform/Linux/X11/XConnection.h"
#include "Platform/Linux/X11/XProperty.h"

#include <QCoreApplication>
#include <QtEndian>

#include <optional>
#include <utility>

namespace talmo {

namespace {

const char *const managerAtom = "_XSETTINGS_S0";
const char *const settingsAtom = "_XSETTINGS_SETTINGS";

/// Reads numbers and texts in sequence; returns none once the bytes are used up.
class SettingsReader {
public:
    explicit SettingsReader(const QByteArray &bytes)
        : m_bytes(bytes)
    {
        constexpr char bigEndian = 1;
        m_isBigEndian = !bytes.isEmpty() && bytes.at(0) == bigEndian;
    }

    template <typename Number>
    std::optional<Number> number()
    {
        const auto bytes = take(sizeof(Number));
        if (!bytes) {
            return std::nullopt;
        }
        return m_isBigEndian ? qFromBigEndian<Number>(bytes->constData())
                             : qFromLittleEndian<Number>(bytes->constData());
    }

    std::optional<QByteArray> take(qsizetype length)
    {
        if (length < 0 || length > m_bytes.size() - m_position) {
            return std::nullopt;
        }
        return m_bytes.mid(std::exchange(m_position, m_position + length), length);
    }

    /// Texts are filled up to a multiple of four bytes.
    std::optional<QByteArray> text(qsizetype length)
    {
        constexpr qsizetype unit = 4;
        const auto bytes = take(length);
        const qsizetype rest = length % unit == 0 ? 0 : unit - length % unit;
        return bytes && take(rest) ? bytes : std::nullopt;
    }

private:
    const QByteArray &m_bytes;
    qsizetype m_position = 0;
    bool m_isBigEndian = false;
};

enum class Kind : quint8 { Number = 0, Text = 1, Colour = 2 };

/// False if the bytes are incomplete or malformed.
bool readSetting(SettingsReader &reader, QHash<QByteArray, QString> &texts)
{
    constexpr qsizetype numberSize = 4;
    constexpr qsizetype colourSize = 8;
    const auto kind = reader.number<quint8>();
    const auto filling = reader.number<quint8>();
    const auto nameLength = reader.number<quint16>();
    const auto name = nameLength && filling ? reader.text(*nameLength) : std::nullopt;
    if (!kind || !name || !reader.number<quint32>()) { // The serial number of the last change.
        return false;
    }
    switch (static_cast<Kind>(*kind)) {
    case Kind::Number:
        return reader.take(numberSize).has_value();
    case Kind::Colour:
        return reader.take(colourSize).has_value();
    case Kind::Text: {
        const auto length = reader.number<quint32>();
        const auto text = length ? reader.text(*length) : std::nullopt;
        if (text) {
            texts.insert(*name, QString::fromUtf8(*text));
        }
        return text.has_value();
    }
    }
    return false;
}

} // namespace

QHash<QByteArray, QString> xSettingsTexts(const QByteArray &property)
{
    constexpr qsizetype byteOrderAndSerial = 8;
    QHash<QByteArray, QString> texts;
    SettingsReader reader(property);
    const auto head = reader.take(byteOrderAndSerial);
    const auto count = head ? reader.number<quint32>() : std::nullopt;
    for (quint32 index = 0; count && index < *count && readSetting(reader, texts); ++index) {
    }
    return texts;
}

XSettings::XSettings()
{
    QCoreApplication::instance()->installNativeEventFilter(this);
    findManager();
    m_texts = xSettingsTexts(xProperty(applicationConnection(), m_manager, applicationAtom(settingsAtom)));
}

XSettings::~XSettings()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

/// Qt listens to the same window on the same connection, for the screen's resolution, with the same events.
void XSettings::findManager()
{
    auto *connection = applicationConnection();
    const auto cookie = xcb_get_selection_owner(connection, applicationAtom(managerAtom));
    const XcbPtr<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(connection, cookie, nullptr));
    m_manager = reply ? reply->owner : XCB_NONE;
    if (m_manager != XCB_NONE) {
        const quint32 events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection, m_manager, XCB_CW_EVENT_MASK, &events);
        xcb_flush(connection);
    }
}

void XSettings::refresh()
{
    const auto texts = xSettingsTexts(xProperty(applicationConnection(), m_manager, applicationAtom(settingsAtom)));
    if (std::exchange(m_texts, texts) != texts) {
        Q_EMIT changed();
    }
}

/// Reads on a later turn of the event loop: a reply must not be waited for in the middle of an event.
bool XSettings::nativeEventFilter(const QByteArray & /*eventType*/, void *message, qintptr * /*result*/)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    constexpr quint8 sentByClient = 0x80;
    const int type = event->response_type & ~sentByClient;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto *change = static_cast<const xcb_property_notify_event_t *>(message);
        if (change->window == m_manager && change->atom == applicationAtom(settingsAtom)) {
            QMetaObject::invokeMethod(this, &XSettings::refresh, Qt::QueuedConnection);
        }
    } else if (type == XCB_CLIENT_MESSAGE) {
        const auto *announcement = static_cast<const xcb_client_message_event_t *>(message);
        if (announcement->type == applicationAtom("MANAGER") &&
            announcement->data.data32[1] == applicationAtom(managerAtom)) {
            QMetaObject::invokeMethod(
                this,
                [this] {
                    findManager();
                    refresh();
                },
                Qt::QueuedConnection);
        }
    }
    return false;
}

} // namespace talmo
