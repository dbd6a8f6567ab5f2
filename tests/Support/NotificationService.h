#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>

namespace talmo::test {

/// The desktop's notification service, on the session bus that the environment names. Keeps what it is told to show.
class NotificationService final : public QDBusVirtualObject {
public:
    struct Notice {
        QString application;
        QString icon;
        QString title;
        QString text;
    };

    NotificationService();
    ~NotificationService() override;

    const QList<Notice> &shown() const { return m_shown; }

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusConnection m_bus;
    QList<Notice> m_shown;
};

} // namespace talmo::test
