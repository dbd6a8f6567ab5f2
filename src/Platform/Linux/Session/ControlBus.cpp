#include "Platform/Linux/Session/ControlBus.h"

#include "Base/Application.h"
#include "Base/Log.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QFile>

#include <unistd.h>

#include <utility>

namespace talmo {

namespace {

const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

/// The contents of the <node> element.
QString describedInterface()
{
    QFile file(QStringLiteral(":/bus/io.github.talmo.Talmo1.xml"));
    const QString text = file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    const auto begin = text.indexOf(QLatin1String("<interface"));
    return text.mid(begin, text.lastIndexOf(QLatin1String("</node>")) - begin);
}

} // namespace

QString ControlBus::interfaceName()
{
    return bundleIdentifier() + QLatin1Char('1');
}

QString ControlBus::objectPath()
{
    return QLatin1Char('/') + bundleIdentifier().replace(QLatin1Char('.'), QLatin1Char('/'));
}

ControlBus::ControlBus(QDBusConnection bus, ControlActions actions)
    : m_bus(std::move(bus)),
      m_actions(std::move(actions)),
      m_methods{{QStringLiteral("Press"), moving(ControlSocket::KeyCommand::Press)},
                {QStringLiteral("Release"), moving(ControlSocket::KeyCommand::Release)},
                {QStringLiteral("Toggle"), moving(ControlSocket::KeyCommand::Toggle)},
                {QStringLiteral("Cancel"), moving(ControlSocket::KeyCommand::Cancel)},
                {QStringLiteral("Status"),
                 [this](const QDBusMessage &call) {
                     const auto status = m_actions.status();
                     return call.createReply({status.state, status.message});
                 }},
                {QStringLiteral("LastText"), [this](const QDBusMessage &call) { return lastText(call); }},
                {QStringLiteral("ShowSettings"), [this](const QDBusMessage &call) {
                     m_actions.openSettings();
                     return call.createReply();
                 }}}
{
}

ControlBus::~ControlBus()
{
    if (m_isOpen) {
        m_bus.unregisterObject(objectPath());
    }
}

bool ControlBus::open()
{
    m_told = m_actions.status();
    // Registers the object first: a caller that starts Talmo through D-Bus activation is answered as soon as the name
    // has an owner.
    m_isOpen = m_bus.isConnected() && m_bus.registerVirtualObject(objectPath(), this);
    if (!m_isOpen) {
        generalLog().info("no session bus, so Talmo cannot be controlled over it");
        return false;
    }
    // GNOME's extension uses the same name for Talmo, so it may already be owned or requested, and is kept until the
    // process ends.
    const auto reply = m_bus.interface()->registerService(bundleIdentifier(), QDBusConnectionInterface::QueueService,
                                                          QDBusConnectionInterface::DontAllowReplacement);
    const bool isOwned = reply.value() == QDBusConnectionInterface::ServiceRegistered ||
                         m_bus.interface()->serviceOwner(bundleIdentifier()).value() == m_bus.baseService();
    if (!isOwned) {
        generalLog().info("another program has the name %s on the session bus", {bundleIdentifier()});
    }
    return isOwned;
}

void ControlBus::tellState()
{
    const auto status = m_actions.status();
    if (m_isOpen && std::exchange(m_told, status) != status) {
        auto signal = QDBusMessage::createSignal(objectPath(), interfaceName(), QStringLiteral("StateChanged"));
        signal.setArguments({status.state, status.message});
        m_bus.send(signal);
    }
}

QString ControlBus::introspect(const QString &) const
{
    return describedInterface();
}

bool ControlBus::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    const auto method = m_methods.find(message.member());
    const bool isMeant = message.interface().isEmpty() || message.interface() == interfaceName();
    if (!isMeant || method == m_methods.end() || !message.signature().isEmpty()) {
        return false;
    }
    answer(message, *method);
    return true;
}

/// The bus knows who calls. By default, a session bus only accepts connections by its own user.
void ControlBus::answer(const QDBusMessage &call, const Method &method)
{
    call.setDelayedReply(true);
    auto question = QDBusMessage::createMethodCall(busName, busPath, busName, QStringLiteral("GetConnectionUnixUser"));
    question.setArguments({call.service()});
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, call, method] {
        watcher->deleteLater();
        const auto reply = watcher->reply();
        const bool isOwnUser =
            reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0).toUInt() == ::geteuid();
        if (!isOwnUser) {
            generalLog().error("refused a call over the session bus by another user's process");
        }
        m_bus.send(isOwnUser ? method(call)
                             : call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("not your Talmo")));
    });
}

ControlBus::Method ControlBus::moving(ControlSocket::KeyCommand command) const
{
    return [this, command](const QDBusMessage &call) {
        m_actions.moveKey(command);
        return call.createReply();
    };
}

QDBusMessage ControlBus::lastText(const QDBusMessage &call) const
{
    const auto text = m_actions.lastDictation(false);
    return text ? call.createReply(*text)
                : call.createErrorReply(interfaceName() + QStringLiteral(".NothingDictated"),
                                        QString::fromUtf8(nothingDictated));
}

} // namespace talmo
