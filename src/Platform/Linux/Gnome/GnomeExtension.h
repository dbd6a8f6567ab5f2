#pragma once

#include "Base/SerialExecutor.h"

#include <QDBusConnection>
#include <QFuture>
#include <QString>

#include <memory>

namespace talmo {

/// Whether Talmo's extension of GNOME Shell is installed and enabled, and enabling it. Main thread. The shell is asked
/// on a thread of its own, for at most a few seconds; the futures never fail while this lives.
class GnomeExtension {
public:
    enum class State {
        /// There is no GNOME Shell on the session bus.
        NoShell,
        /// Its files are not there.
        NotInstalled,
        Disabled,
        /// It is enabled, but was installed after the shell started, which loads it when the user next logs in.
        NeedsLogin,
        Enabled,
        /// The user has switched off all extensions.
        AllDisabled,
        /// The shell could not load it; its log says why.
        Failed,
    };

    explicit GnomeExtension(QDBusConnection bus = QDBusConnection::sessionBus());

    QFuture<State> state();
    /// Enables it, now and for later sessions, and finishes with the new state. Call only when the user has asked for
    /// it.
    QFuture<State> enable();

    /// The extension that this version of the shell ("43.9") can load.
    static QString identifierFor(const QString &shellVersion);

private:
    QDBusConnection m_bus;
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
