#include "Support/NotificationService.h"

#include "Support/Printing.h"

#include <QDBusMessage>

namespace talmo::test {

namespace {

const QString service = u"org.freedesktop.Notifications"_s;

} // namespace

NotificationService::NotificationService()
    : BusService(service, u"/org/freedesktop/Notifications"_s)
{
}

bool NotificationService::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    // The types of all arguments, as the protocol has them: a service refuses a call with others.
    if (message.interface() != service || message.member() != u"Notify"_s ||
        message.signature() != u"susssasa{sv}i"_s) {
        return false;
    }
    const auto arguments = message.arguments();
    m_shown.append(
        {arguments[0].toString(), arguments[2].toString(), arguments[3].toString(), arguments[4].toString()});
    return connection.send(message.createReply(uint(m_shown.size())));
}

} // namespace talmo::test
