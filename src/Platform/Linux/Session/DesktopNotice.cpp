#include "Platform/Linux/Session/DesktopNotice.h"

#include "Base/Application.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace talmo {

void showDesktopNotice(const QString &text)
{
    const QString service = QStringLiteral("org.freedesktop.Notifications");
    auto call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"), service,
                                               QStringLiteral("Notify"));
    constexpr uint replacesNothing = 0;
    constexpr int asTheDesktopLikes = -1;
    call.setArguments({QStringLiteral("Talmo"), replacesNothing, bundleIdentifier(), QStringLiteral("Talmo"), text,
                       QStringList(), QVariantMap(), asTheDesktopLikes});
    QDBusConnection::sessionBus().send(call);
}

} // namespace talmo
