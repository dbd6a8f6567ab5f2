#include "Support/ShortcutService.h"

#include "Support/Printing.h"

#include <QDBusArgument>
#include <QDBusMessage>

namespace talmo::test {

ShortcutService::ShortcutService(int takenKey)
    : BusService(u"org.kde.kglobalaccel"_s, u"/kglobalaccel"_s),
      m_takenKey(takenKey)
{
}

bool ShortcutService::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    const auto arguments = message.arguments();
    if (message.interface() != u"org.kde.KGlobalAccel"_s || arguments.isEmpty()) {
        return false;
    }
    const auto id = arguments[0].toStringList();
    if (message.member() == u"doRegister"_s && message.signature() == u"as"_s) {
        calls.append(u"register %1/%2"_s.arg(id[0], id[1]));
        return connection.send(message.createReply());
    }
    if (message.member() == u"setShortcut"_s && message.signature() == u"asaiu"_s) {
        const auto keys = qdbus_cast<QList<int>>(arguments[1]);
        calls.append(u"set %1 %2"_s.arg(keys.value(0)).arg(arguments[2].toUInt()));
        const bool isFree = keys.value(0) != m_takenKey;
        return connection.send(message.createReply(QVariant::fromValue(isFree ? keys : QList<int>())));
    }
    if (message.member() == u"setInactive"_s && message.signature() == u"as"_s) {
        calls.append(u"inactive"_s);
        return connection.send(message.createReply());
    }
    return false;
}

void ShortcutService::signal(const QString &name, const QString &action)
{
    auto message = QDBusMessage::createSignal(u"/component/talmo"_s, u"org.kde.kglobalaccel.Component"_s, name);
    message.setArguments({u"talmo"_s, action, qlonglong(1)});
    bus().send(message);
}

} // namespace talmo::test
