#include "Platform/Linux/Wayland/Portal/PortalRequest.h"

#include "Base/Application.h"
#include "Base/Log.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <chrono>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds answerTime = 1s;
/// The portal answers a request at once; only its outcome waits for the user.
constexpr std::chrono::milliseconds acceptTime = 25s;

constexpr uint done = 0;
constexpr uint refused = 1;

} // namespace

QDBusConnection PortalRequest::connectToPortal()
{
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("talmo-portal"));
    if (bus.isConnected()) {
        // Newer portals ask programs outside a sandbox for their name; older ones do not know the question.
        auto message = QDBusMessage::createMethodCall(
            service(), path(), QStringLiteral("org.freedesktop.host.portal.Registry"), QStringLiteral("Register"));
        message.setArguments({bundleIdentifier(), QVariantMap()});
        bus.send(message);
    }
    return bus;
}

uint PortalRequest::versionOf(const QDBusConnection &bus, const QString &interface)
{
    if (!bus.isConnected()) {
        return 0;
    }
    auto message = QDBusMessage::createMethodCall(service(), path(), QStringLiteral("org.freedesktop.DBus.Properties"),
                                                  QStringLiteral("Get"));
    message.setArguments({fullName(interface), QStringLiteral("version")});
    const auto reply = bus.call(message, QDBus::Block, static_cast<int>(answerTime.count()));
    return reply.arguments().value(0).value<QDBusVariant>().variant().toUInt();
}

QString PortalRequest::sessionIn(const QVariantMap &results)
{
    const QVariant handle = results.value(QStringLiteral("session_handle")); // A text, in most portals.
    return handle.canConvert<QDBusObjectPath>() ? handle.value<QDBusObjectPath>().path() : handle.toString();
}

QString PortalRequest::newToken()
{
    static int number = 0;
    return QStringLiteral("talmo%1").arg(++number);
}

void PortalRequest::send(const QDBusConnection &bus, const QString &interface, const QString &method,
                         QVariantList arguments, QVariantMap options, QObject *owner, Handler handler)
{
    auto *request = new PortalRequest(bus, owner, std::move(handler));
    const QString token = newToken();
    QString sender = bus.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    // Before the call: the answer may come first.
    request->follow(QStringLiteral("%1/request/%2/%3").arg(path(), sender, token));
    options.insert(QStringLiteral("handle_token"), token);
    arguments.append(options);
    auto message = QDBusMessage::createMethodCall(service(), path(), fullName(interface), method);
    message.setArguments(arguments);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, static_cast<int>(acceptTime.count())), request);
    connect(watcher, &QDBusPendingCallWatcher::finished, request, [request, watcher, method] {
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError()) {
            generalLog().error("the desktop portal: %s failed: %@", {method, reply.error().message()});
            request->finish(Outcome::Failed, {});
        } else if (reply.value().path() != request->m_path) {
            request->follow(reply.value().path()); // Portals before 0.9 choose the path.
        }
    });
}

void PortalRequest::call(const QDBusConnection &bus, const QString &objectPath, const QString &interface,
                         const QString &method, const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(service(), objectPath, fullName(interface), method);
    message.setArguments(arguments);
    bus.send(message);
}

PortalRequest::PortalRequest(QDBusConnection bus, QObject *owner, Handler handler)
    : QObject(owner),
      m_bus(std::move(bus)),
      m_handler(std::move(handler))
{
}

void PortalRequest::follow(const QString &requestPath)
{
    m_path = requestPath;
    m_bus.connect(service(), requestPath, fullName(QStringLiteral("Request")), QStringLiteral("Response"), this,
                  SLOT(handleResponse(uint, QVariantMap)));
}

void PortalRequest::handleResponse(uint code, const QVariantMap &results)
{
    finish(code == done ? Outcome::Done : code == refused ? Outcome::Refused : Outcome::Failed, results);
}

void PortalRequest::finish(Outcome outcome, const QVariantMap &results)
{
    if (const auto handler = std::exchange(m_handler, {})) {
        deleteLater();
        handler(outcome, results);
    }
}

} // namespace talmo
