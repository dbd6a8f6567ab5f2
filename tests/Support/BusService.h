#pragma once

#include "Support/Printing.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>

#include <utility>

namespace talmo::test {

/// Stands in for another program's service on the session bus that the environment names. Derived classes answer the
/// calls.
class BusService : public QDBusVirtualObject {
public:
    ~BusService() override
    {
        m_bus.unregisterService(m_service);
        QDBusConnection::disconnectFromBus(m_bus.name());
    }

    QString introspect(const QString &) const override { return {}; }

protected:
    BusService(QString service, const QString &path)
        : m_service(std::move(service)),
          m_bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), connectionName()))
    {
        m_bus.registerVirtualObject(path, this);
        m_bus.registerService(m_service);
    }

    QDBusConnection &bus() { return m_bus; }

private:
    /// A connection of its own, so that calls take the way between programs.
    static QString connectionName()
    {
        static int next = 0;
        return u"service%1"_s.arg(++next);
    }

    QString m_service;
    QDBusConnection m_bus;
};

} // namespace talmo::test
