#include "Support/MockPortal.h"

#include "Base/SerialExecutor.h"
#include "Platform/Linux/Wayland/Portal/PortalShortcut.h"
#include "Support/Printing.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace talmo::test {

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString prefix = u"org.freedesktop.portal."_s;

int nextConnection = 0;

} // namespace

class MockPortal::Object final : public QDBusVirtualObject {
public:
    explicit Object(Behaviour wanted)
        : behaviour(std::move(wanted)),
          m_bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                              u"mock-portal%1"_s.arg(++nextConnection)))
    {
        PortalShortcut::registerType();
        m_bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
        m_bus.registerService(service);
    }
    ~Object() override
    {
        const QString name = m_bus.name();
        m_bus.unregisterService(service);
        QDBusConnection::disconnectFromBus(name);
    }
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QString member = message.member();
        if (member == u"Get"_s) {
            return answerVersion(message, connection);
        }
        if (member == u"Close"_s) {
            calls.append(u"close"_s);
            return connection.send(message.createReply());
        }
        if (member == u"NotifyKeyboardKeycode"_s && message.signature() == u"oa{sv}iu"_s) {
            calls.append(u"key %1 %2"_s.arg(message.arguments()[2].toInt()).arg(message.arguments()[3].toUInt()));
            return connection.send(message.createReply());
        }
        return message.interface().startsWith(prefix) && answerRequest(message, connection);
    }

    void signal(const QString &name, const QString &shortcut)
    {
        auto message = QDBusMessage::createSignal(path, prefix + u"GlobalShortcuts"_s, name);
        message.setArguments({QVariant::fromValue(QDBusObjectPath(m_session)), shortcut, qulonglong(1), QVariantMap()});
        m_bus.send(message);
    }

    Behaviour behaviour;
    QStringList calls;

private:
    bool answerVersion(const QDBusMessage &message, const QDBusConnection &connection) const
    {
        const auto interface = message.arguments()[0].toString();
        const uint version = interface == prefix + u"GlobalShortcuts"_s ? behaviour.shortcutsVersion
                             : interface == prefix + u"RemoteDesktop"_s ? behaviour.remoteDesktopVersion
                                                                        : 0;
        if (version == 0) {
            return connection.send(message.createErrorReply(QDBusError::InvalidArgs, u"No such interface"_s));
        }
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(version))));
    }

    bool answerRequest(const QDBusMessage &message, const QDBusConnection &connection)
    {
        const auto options = qdbus_cast<QVariantMap>(message.arguments().last());
        QString sender = message.service().mid(1);
        sender.replace(u'.', u'_');
        const auto placeOf = [&](const QString &kind, const QString &token) {
            return u"%1/%2/%3/%4"_s.arg(path, kind, sender, options.value(token).toString());
        };
        const QString request = placeOf(u"request"_s, u"handle_token"_s);
        connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        uint response = 0;
        QVariantMap results;
        const QString member = message.member();
        if (member == u"CreateSession"_s) {
            m_session = placeOf(u"session"_s, u"session_handle_token"_s);
            results.insert(u"session_handle"_s, m_session);
        } else if (member == u"BindShortcuts"_s && message.signature() == u"oa(sa{sv})sa{sv}"_s) {
            bind(qdbus_cast<QList<PortalShortcut>>(message.arguments()[1]));
            response = behaviour.response;
            results = response == 0 ? shortcutResults() : QVariantMap();
        } else if (member == u"ListShortcuts"_s) {
            calls.append(u"list"_s);
            results = shortcutResults();
        } else if (member == u"SelectDevices"_s) {
            m_token = options.value(u"restore_token"_s).toString();
            calls.append(u"select %1 %2"_s.arg(options.value(u"types"_s).toUInt())
                             .arg(options.value(u"persist_mode"_s).toUInt()));
        } else if (member == u"Start"_s) {
            calls.append(u"start "_s + m_token);
            if (behaviour.asksUser) {
                return true;
            }
            response = behaviour.response;
            results.insert(u"devices"_s, 1U);
            if (!behaviour.newToken.isEmpty()) {
                results.insert(u"restore_token"_s, behaviour.newToken);
            }
        }
        auto answer =
            QDBusMessage::createTargetedSignal(message.service(), request, prefix + u"Request"_s, u"Response"_s);
        answer.setArguments({response, results});
        return connection.send(answer);
    }

    void bind(const QList<PortalShortcut> &shortcuts)
    {
        for (const auto &shortcut : shortcuts) {
            calls.append(
                u"bind %1 %2"_s.arg(shortcut.id, shortcut.properties.value(u"preferred_trigger"_s).toString()));
        }
    }

    QVariantMap shortcutResults() const
    {
        QList<PortalShortcut> shortcuts;
        if (behaviour.showsShortcut) {
            shortcuts.append(PortalShortcut{u"dictate"_s, {{u"trigger_description"_s, u"Pause key"_s}}});
        }
        return {{u"shortcuts"_s, QVariant::fromValue(shortcuts)}};
    }

    QDBusConnection m_bus;
    QString m_session;
    QString m_token;
};

MockPortal::MockPortal(Behaviour behaviour)
    : m_thread(SerialExecutor::onNewThread(u"mock-portal"_s))
{
    m_thread->call([this, &behaviour] { m_object = std::make_unique<Object>(behaviour); }).waitForFinished();
}

MockPortal::~MockPortal()
{
    m_thread->call([this] { m_object.reset(); }).waitForFinished();
}

void MockPortal::change(const Behaviour &behaviour)
{
    m_thread->call([this, &behaviour] { m_object->behaviour = behaviour; }).waitForFinished();
}

QStringList MockPortal::calls() const
{
    QStringList calls;
    m_thread->call([this, &calls] { calls = m_object->calls; }).waitForFinished();
    return calls;
}

void MockPortal::press(const QString &shortcut)
{
    m_thread->call([this, &shortcut] { m_object->signal(u"Activated"_s, shortcut); }).waitForFinished();
}

void MockPortal::release()
{
    m_thread->call([this] { m_object->signal(u"Deactivated"_s, u"dictate"_s); }).waitForFinished();
}

} // namespace talmo::test
