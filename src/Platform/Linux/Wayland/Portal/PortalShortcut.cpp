#include "Platform/Linux/Wayland/Portal/PortalShortcut.h"

#include <QDBusMetaType>

namespace talmo {

void PortalShortcut::registerType()
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
}

QList<PortalShortcut> PortalShortcut::listIn(const QVariantMap &results)
{
    return qdbus_cast<QList<PortalShortcut>>(results.value(QStringLiteral("shortcuts")));
}

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    // NOLINTNEXTLINE(bugprone-return-const-ref-from-parameter): Qt declares these operators so.
    return argument;
}

} // namespace talmo
