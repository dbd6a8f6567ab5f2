#include "Support/NotifierHost.h"

#include "Support/Printing.h"
#include "Waiting.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

namespace talmo::test {

namespace {

const QString watcherPath = u"/StatusNotifierWatcher"_s;
const QString itemPath = u"/StatusNotifierItem"_s;
const QString itemInterface = u"org.kde.StatusNotifierItem"_s;
const QString properties = u"org.freedesktop.DBus.Properties"_s;

} // namespace

NotifierHost::NotifierHost()
    : BusService(u"org.kde.StatusNotifierWatcher"_s, watcherPath)
{
}

QString NotifierHost::introspect(const QString &path) const
{
    return path != watcherPath ? QString()
                               : u"<interface name=\"org.kde.StatusNotifierWatcher\">"
                                 "<method name=\"RegisterStatusNotifierItem\"><arg direction=\"in\" type=\"s\" "
                                 "name=\"service\"/></method>"
                                 "<property name=\"IsStatusNotifierHostRegistered\" type=\"b\" access=\"read\"/>"
                                 "<property name=\"ProtocolVersion\" type=\"i\" access=\"read\"/>"
                                 "<property name=\"RegisteredStatusNotifierItems\" type=\"as\" access=\"read\"/>"
                                 "</interface>"_s;
}

QVariant NotifierHost::ownProperty(const QString &name) const
{
    if (name == u"IsStatusNotifierHostRegistered"_s) {
        return true;
    }
    if (name == u"ProtocolVersion"_s) {
        return 0;
    }
    return m_item.isEmpty() ? QStringList() : QStringList{m_item};
}

bool NotifierHost::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.interface() == properties && message.member() == u"Get"_s) {
        const auto value = QVariant::fromValue(QDBusVariant(ownProperty(message.arguments().value(1).toString())));
        return connection.send(message.createReply(value));
    }
    if (message.member() == u"RegisterStatusNotifierItem"_s) {
        const QString service = message.arguments().value(0).toString();
        m_item = service.startsWith(QLatin1Char('/')) ? message.service() : service;
        ++m_registrations;
        bus().connect(m_item, itemPath, itemInterface, u"NewIcon"_s, this, SLOT(newIcon()));
        return connection.send(message.createReply());
    }
    return false;
}

QDBusMessage NotifierHost::call(const QString &interface, const QString &method, const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(m_item, itemPath, interface, method);
    message.setArguments(arguments);
    const QDBusPendingCallWatcher watcher(bus().asyncCall(message));
    testbed::waitUntil([&watcher] { return watcher.isFinished(); }, std::chrono::seconds(10));
    return watcher.reply();
}

QVariant NotifierHost::itemProperty(const QString &name)
{
    const auto reply = call(properties, u"Get"_s, {itemInterface, name});
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).value<QDBusVariant>().variant()
                                                      : QVariant();
}

QByteArray NotifierHost::iconPixels()
{
    const auto pixmaps = itemProperty(u"IconPixmap"_s).value<QDBusArgument>();
    QByteArray smallest;
    pixmaps.beginArray();
    while (!pixmaps.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        pixmaps.beginStructure();
        pixmaps >> width >> height >> pixels;
        pixmaps.endStructure();
        if (smallest.isEmpty() || pixels.size() < smallest.size()) {
            smallest = pixels;
        }
    }
    pixmaps.endArray();
    return smallest;
}

void NotifierHost::activate(int x, int y)
{
    call(itemInterface, u"Activate"_s, {x, y});
}

} // namespace talmo::test
