#pragma once

#include "Control/ControlActions.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QString>

#include <functional>

namespace talmo {

/// Talmo on the session bus: the same actions as over the control socket, and its state as a signal. The interface is
/// described by packaging/io.github.talmo.Talmo1.xml, which it also answers introspection with. Calls by other users
/// are refused. Main thread; nothing waits for the bus.
class ControlBus final : public QDBusVirtualObject {
    Q_OBJECT

public:
    static QString interfaceName();
    static QString objectPath();

    ControlBus(QDBusConnection bus, ControlActions actions);
    ~ControlBus() override;

    /// Asks for the name, and keeps it until the process ends. False, and logged, if there is no session bus, or
    /// another Talmo has the name for now.
    bool open();
    /// Sends the state if it is another than the last time.
    void tellState();

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    /// Returns the reply to a call.
    using Method = std::function<QDBusMessage(const QDBusMessage &)>;

    Method moving(ControlSocket::KeyCommand command) const;
    QDBusMessage lastText(const QDBusMessage &call) const;
    void answer(const QDBusMessage &call, const Method &method);

    QDBusConnection m_bus;
    ControlActions m_actions;
    QHash<QString, Method> m_methods;
    ControlSocket::Status m_told;
    bool m_isOpen = false;
};

} // namespace talmo
