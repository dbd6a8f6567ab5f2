#pragma once

#include "Control/ControlSocket.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace talmo {

/// The states of the Talmo on the session bus, as it announces them. Thread with an event loop.
class BusStates final : public QObject {
    Q_OBJECT

public:
    explicit BusStates(QDBusConnection bus);

    /// False if no Talmo is on the bus; none is started. stateChanged() then begins with the present state.
    bool follow();

Q_SIGNALS:
    void stateChanged(const talmo::ControlSocket::Status &status);
    /// Talmo has ended.
    void ended();

private Q_SLOTS:
    void take(const QString &state, const QString &message);

private: // NOLINT(readability-redundant-access-specifiers): no slots.
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    ControlSocket::Status m_last;
};

} // namespace talmo
