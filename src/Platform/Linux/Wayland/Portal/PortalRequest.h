#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <functional>

namespace talmo {

/// One request to the desktop portal. Its answer comes once the user has answered a dialog, if there is one; the
/// request then deletes itself. The thread that sends it needs an event loop.
class PortalRequest final : public QObject {
    Q_OBJECT
public:
    enum class Outcome { Done, Refused, Failed };
    using Handler = std::function<void(Outcome outcome, const QVariantMap &results)>;

    /// A connection of its own: a portal takes the name of a program only before anything else is asked over it, and
    /// all that was asked for ends with it.
    static QDBusConnection connectToPortal();
    /// The version of one of the portal's interfaces ("GlobalShortcuts"); 0 if there is none. Waits for a second at
    /// most.
    static uint versionOf(const QDBusConnection &bus, const QString &interface);
    /// Calls a method that ends with options. `handler` is not called once `owner` is gone.
    static void send(const QDBusConnection &bus, const QString &interface, const QString &method,
                     QVariantList arguments, QVariantMap options, QObject *owner, Handler handler);
    /// A call that is answered at once.
    static void call(const QDBusConnection &bus, const QString &objectPath, const QString &interface,
                     const QString &method, const QVariantList &arguments);
    /// The session that CreateSession has made; empty if there is none.
    static QString sessionIn(const QVariantMap &results);
    /// For paths that the caller of a method chooses.
    static QString newToken();

    static QString service() { return QStringLiteral("org.freedesktop.portal.Desktop"); }
    static QString path() { return QStringLiteral("/org/freedesktop/portal/desktop"); }
    static QString fullName(const QString &interface) { return QStringLiteral("org.freedesktop.portal.") + interface; }

private Q_SLOTS:
    void handleResponse(uint code, const QVariantMap &results);

private: // NOLINT(readability-redundant-access-specifiers): no slots.
    PortalRequest(QDBusConnection bus, QObject *owner, Handler handler);
    void follow(const QString &requestPath);
    void finish(Outcome outcome, const QVariantMap &results);

    QDBusConnection m_bus;
    QString m_path;
    Handler m_handler;
};

} // namespace talmo
