#include "Platform/Linux/Session/BusStates.h"

#include "Base/Application.h"
#include "Platform/Linux/Session/ControlBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace talmo {

BusStates::BusStates(QDBusConnection bus)
    : m_bus(std::move(bus))
{
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    m_watcher.addWatchedService(bundleIdentifier());
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, &BusStates::ended);
}

bool BusStates::follow()
{
    const QString name = bundleIdentifier();
    if (!m_bus.isConnected() || !m_bus.interface()->isServiceRegistered(name)) {
        return false;
    }
    // Before asking, so that no change is missed in between.
    m_bus.connect(name, ControlBus::objectPath(), ControlBus::interfaceName(), QStringLiteral("StateChanged"), this,
                  SLOT(take(QString, QString)));
    auto question = QDBusMessage::createMethodCall(name, ControlBus::objectPath(), ControlBus::interfaceName(),
                                                   QStringLiteral("Status"));
    question.setAutoStartService(false);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const auto values = watcher->reply().arguments();
        if (watcher->isError()) {
            Q_EMIT ended();
        } else {
            take(values.value(0).toString(), values.value(1).toString());
        }
    });
    return true;
}

void BusStates::take(const QString &state, const QString &message)
{
    const ControlSocket::Status status{state, message};
    if (std::exchange(m_last, status) != status) {
        Q_EMIT stateChanged(status);
    }
}

} // namespace talmo
