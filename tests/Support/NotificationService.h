#pragma once

#include "Support/BusService.h"

#include <QList>
#include <QString>

namespace talmo::test {

/// The desktop's notification service, on the session bus that the environment names. Keeps what it is told to show.
class NotificationService final : public BusService {
public:
    struct Notice {
        QString application;
        QString icon;
        QString title;
        QString text;
    };

    NotificationService();

    const QList<Notice> &shown() const { return m_shown; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QList<Notice> m_shown;
};

} // namespace talmo::test
