#include "Support/SettingsPortal.h"

#include "Support/Printing.h"

#include <QDBusMessage>
#include <QDBusVariant>

namespace talmo::test {

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.Settings"_s;

int nextConnection = 0;

} // namespace

SettingsPortal::SettingsPortal(Preference preference)
    : m_bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                          u"portal%1"_s.arg(++nextConnection))),
      m_preference(preference)
{
    m_bus.registerVirtualObject(path, this);
    m_bus.registerService(service);
}

SettingsPortal::~SettingsPortal()
{
    const QString name = m_bus.name();
    m_bus.unregisterService(service);
    QDBusConnection::disconnectFromBus(name);
}

void SettingsPortal::prefer(Preference preference)
{
    m_preference = preference;
    auto signal = QDBusMessage::createSignal(path, interface, u"SettingChanged"_s);
    signal << u"org.freedesktop.appearance"_s << u"color-scheme"_s
           << QVariant::fromValue(QDBusVariant(QVariant(uint(preference))));
    m_bus.send(signal);
}

QString SettingsPortal::introspect(const QString &) const
{
    return {};
}

bool SettingsPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.interface() != interface || message.member() != u"Read"_s || message.signature() != u"ss"_s) {
        return false;
    }
    ++m_readings;
    // Read() wraps its answer twice.
    const QDBusVariant inner{QVariant{uint(m_preference)}};
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
}

} // namespace talmo::test
