#pragma once

#include "Support/BusService.h"

#include <QByteArray>
#include <QSize>
#include <QString>

#include <optional>

namespace talmo::test {

/// A StatusNotifierItem host, on the session bus that the environment names.
class NotifierHost final : public BusService {
    Q_OBJECT

public:
    NotifierHost();

    /// The bus name of the registered item; empty until then.
    QString item() const { return m_item; }
    int registrations() const { return m_registrations; }
    /// How often the item has announced a new icon.
    int iconChanges() const { return m_iconChanges; }

    /// Reads a property of the item, running this thread's event loop until the reply arrives.
    QVariant itemProperty(const QString &name);
    /// The pixels of the item's smallest icon; empty if it has none.
    QByteArray iconPixels();
    /// Activates the item with that screen position.
    void activate(int x, int y);

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private Q_SLOTS:
    void newIcon() { ++m_iconChanges; }

private:
    QDBusMessage call(const QString &interface, const QString &method, const QVariantList &arguments);
    QVariant ownProperty(const QString &name) const;

    QString m_item;
    int m_registrations = 0;
    int m_iconChanges = 0;
};

} // namespace talmo::test
