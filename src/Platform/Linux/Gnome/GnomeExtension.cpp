#include "Platform/Linux/Gnome/GnomeExtension.h"

#include "Base/Log.h"
#include "Platform/Linux/Gnome/ShellSettings.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QStandardPaths>
#include <QVariantMap>

#include <chrono>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;
using State = GnomeExtension::State;

const QString shellName = QStringLiteral("org.gnome.Shell");
const QString shellPath = QStringLiteral("/org/gnome/Shell");
const QString extensionsInterface = QStringLiteral("org.gnome.Shell.Extensions");
constexpr std::chrono::milliseconds answerTime = 5s;

/// The shell's own numbers for an extension's state.
constexpr int enabledState = 1;
constexpr int errorState = 3;
constexpr int outOfDateState = 4;

QDBusMessage call(QDBusConnection &bus, const QString &method, const QVariantList &arguments,
                  const QString &interface = extensionsInterface)
{
    auto message = QDBusMessage::createMethodCall(shellName, shellPath, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    auto reply = bus.call(message, QDBus::Block, static_cast<int>(answerTime.count()));
    if (reply.type() == QDBusMessage::ErrorMessage) {
        generalLog().error("GNOME Shell: %@ failed: %@", {method, reply.errorMessage()});
    }
    return reply;
}

QVariant property(QDBusConnection &bus, const QString &name)
{
    const auto reply = call(bus, QStringLiteral("Get"), {extensionsInterface, name},
                            QStringLiteral("org.freedesktop.DBus.Properties"));
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

bool isOnDisk(const QString &identifier)
{
    const QString file = QStringLiteral("gnome-shell/extensions/%1/metadata.json").arg(identifier);
    return !QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty();
}

QString identifierOn(QDBusConnection &bus)
{
    return GnomeExtension::identifierFor(property(bus, QStringLiteral("ShellVersion")).toString());
}

State stateOn(QDBusConnection bus)
{
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(shellName)) {
        return State::NoShell;
    }
    const QString extension = identifierOn(bus);
    const auto reply = call(bus, QStringLiteral("GetExtensionInfo"), {extension});
    const auto info = qdbus_cast<QVariantMap>(reply.arguments().value(0));
    if (info.isEmpty() && !isOnDisk(extension)) {
        return State::NotInstalled;
    }
    if (info.isEmpty()) {
        return ShellSettings::isEnabled(extension) ? State::NeedsLogin : State::Disabled;
    }
    switch (info.value(QStringLiteral("state")).toInt()) {
    case enabledState:
        return State::Enabled;
    case errorState:
    case outOfDateState:
        return State::Failed;
    default:
        return property(bus, QStringLiteral("UserExtensionsEnabled")).toBool() ? State::Disabled : State::AllDisabled;
    }
}

State enableOn(QDBusConnection bus)
{
    if (stateOn(bus) == State::Disabled) {
        const QString extension = identifierOn(bus);
        const auto reply = call(bus, QStringLiteral("EnableExtension"), {extension});
        const bool isKnown = reply.arguments().value(0).toBool();
        if (!isKnown && !ShellSettings::enable(extension)) {
            generalLog().error("GNOME Shell's settings cannot be changed");
        }
    }
    return stateOn(bus);
}

} // namespace

GnomeExtension::GnomeExtension(QDBusConnection bus)
    : m_bus(std::move(bus)),
      m_executor(SerialExecutor::onNewThread(QStringLiteral("talmo-gnome")))
{
}

QString GnomeExtension::identifierFor(const QString &shellVersion)
{
    constexpr int firstWithModules = 45;
    return shellVersion.section(QLatin1Char('.'), 0, 0).toInt() < firstWithModules
               ? QStringLiteral("talmo-43@talmo.github.io")
               : QStringLiteral("talmo@talmo.github.io");
}

QFuture<State> GnomeExtension::state()
{
    return m_executor->call([bus = m_bus] { return stateOn(bus); });
}

QFuture<State> GnomeExtension::enable()
{
    return m_executor->call([bus = m_bus] { return enableOn(bus); });
}

} // namespace talmo
