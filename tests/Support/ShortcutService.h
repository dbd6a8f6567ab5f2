#pragma once

#include "Support/BusService.h"

#include <QString>
#include <QStringList>

namespace talmo::test {

/// KDE's service for global shortcuts, on the session bus that the environment names.
class ShortcutService final : public BusService {
public:
    /// `takenKey`: another program's.
    explicit ShortcutService(int takenKey = 0);

    /// "register talmo/dictate", "set 16777224 6", "inactive".
    QStringList calls;

    void press(const QString &action) { signal(QStringLiteral("globalShortcutPressed"), action); }
    void release(const QString &action) { signal(QStringLiteral("globalShortcutReleased"), action); }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    void signal(const QString &name, const QString &action);

    int m_takenKey;
};

} // namespace talmo::test
