#pragma once

#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QProcessEnvironment>

namespace talmo::test {

/// As a desktop does when a screen reader is switched on. The environment names the session bus.
inline void switchAccessibilityOn(const QProcessEnvironment &environment)
{
    auto session = QDBusConnection::connectToBus(environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s), u"test"_s);
    auto request = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                  u"org.freedesktop.DBus.Properties"_s, u"Set"_s);
    request << u"org.a11y.Status"_s << u"IsEnabled"_s << QVariant::fromValue(QDBusVariant(true));
    EXPECT_EQ(session.call(request).type(), QDBusMessage::ReplyMessage);
    QDBusConnection::disconnectFromBus(u"test"_s);
}

} // namespace talmo::test
