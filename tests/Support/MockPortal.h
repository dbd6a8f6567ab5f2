#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>

namespace talmo {
class SerialExecutor;
} // namespace talmo

namespace talmo::test {

/// The global shortcuts and the remote desktop of a desktop portal, on the session bus that the environment names. It
/// runs on a thread of its own, so that a caller may wait for it; its methods may be called on any.
class MockPortal final {
public:
    struct Behaviour {
        /// 0: it has none.
        uint shortcutsVersion = 1;
        uint remoteDesktopVersion = 2;
        /// The response to BindShortcuts and Start: 0 success, 1 refused by the user, 2 other.
        uint response = 0;
        /// Whether a bound shortcut is in the response, and in that of ListShortcuts.
        bool showsShortcut = true;
        /// Whether Start waits for the user, who never answers.
        bool asksUser = false;
        /// What Start returns; empty: nothing.
        QString newToken = QStringLiteral("token 1");
    };

    explicit MockPortal(Behaviour behaviour);
    ~MockPortal();
    MockPortal(const MockPortal &) = delete;
    MockPortal &operator=(const MockPortal &) = delete;

    void change(const Behaviour &behaviour);
    /// "bind Pause", "start token 1", "key 42 1", "close".
    QStringList calls() const;
    void press(const QString &shortcut = QStringLiteral("dictate"));
    void release();

private:
    class Object;

    std::shared_ptr<SerialExecutor> m_thread;
    std::unique_ptr<Object> m_object;
};

} // namespace talmo::test
