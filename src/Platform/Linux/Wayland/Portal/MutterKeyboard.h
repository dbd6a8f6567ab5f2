#pragma once

#include "Platform/Linux/Wayland/Portal/LentKeyboard.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <functional>

namespace talmo {

/// The keyboard of GNOME's own remote desktop, which its portals before version 2 are made of: it asks nobody, so
/// Talmo's own settings do.
class MutterKeyboard final : public LentKeyboard {
    Q_OBJECT
public:
    static bool isOffered(const QDBusConnection &bus);

    explicit MutterKeyboard(QDBusConnection bus);

    bool isGranted() const override { return true; }
    void request(Handler handler) override { handler(true); }
    void press(const std::vector<quint32> &keys, Handler handler) override;

private:
    void type(const QString &session, const std::vector<quint32> &keys);
    void ask(const QString &path, const QString &interface, const QString &method,
             std::function<void(const QDBusMessage &reply)> handle);

    QDBusConnection m_bus;
};

} // namespace talmo
