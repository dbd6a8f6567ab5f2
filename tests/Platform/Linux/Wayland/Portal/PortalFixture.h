#pragma once

#include "DesktopParts.h"
#include "Support/MockPortal.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QDBusConnection>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

namespace talmo::test {

/// A private session bus, on which a test may put a portal.
class PortalFixture : public testing::Test {
protected:
    PortalFixture()
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
        previousBus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        daemon = testbed::startBus(environment);
        const QString address = environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s);
        qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
        bus = QDBusConnection::connectToBus(address, u"portal-client"_s);
    }
    ~PortalFixture() override
    {
        portal.reset();
        QDBusConnection::disconnectFromBus(u"portal-client"_s);
        qputenv("DBUS_SESSION_BUS_ADDRESS", previousBus);
    }
    PortalFixture(const PortalFixture &) = delete;
    PortalFixture &operator=(const PortalFixture &) = delete;

    QTemporaryDir folder;
    QByteArray previousBus;
    std::unique_ptr<testbed::ChildProcess> daemon;
    QDBusConnection bus{QString()};
    std::optional<MockPortal> portal;
};

} // namespace talmo::test
