#include "Support/SettingsPortal.h"

#include "Support/Printing.h"

#include <QDBusMessage>
#include <QDBusVariant>

namespace talmo::test {

namespace {

const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.Settings"_s;

} // namespace

SettingsPortal::SettingsPortal(Preference preference)
    : BusService(u"org.freedesktop.portal.Desktop"_s, path),
      m_preference(preference)
{
}

void SettingsPortal::prefer(Preference preference)
{
    m_preference = preference;
    auto signal = QDBusMessage::createSignal(path, interface, u"SettingChanged"_s);
    signal << u"org.freedesktop.appearance"_s << u"color-scheme"_s
           << QVariant::fromValue(QDBusVariant(QVariant(uint(preference))));
    bus().send(signal);
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
