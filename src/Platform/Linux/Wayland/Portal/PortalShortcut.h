#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace talmo {

/// A global shortcut as the portal describes it: (sa{sv}).
struct PortalShortcut {
    QString id;
    QVariantMap properties;

    /// Before the first message with one of them.
    static void registerType();
    /// In the results of a request.
    static QList<PortalShortcut> listIn(const QVariantMap &results);
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut);
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut);

} // namespace talmo

Q_DECLARE_METATYPE(talmo::PortalShortcut)
