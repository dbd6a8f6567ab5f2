#pragma once

#include "Base/Clock.h"
#include "Control/ControlSocket.h"

#include <QCoro/QCoroTask>

#include <QFuture>
#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// Serves requests from the user's other programs over the control socket. Connections from other users are closed
/// unread, and no client can keep the server busy: the length of a request, the time it may take to arrive and the
/// number of clients are limited. Main thread.
class ControlServer final : public QObject {
public:
    /// Inserts a text; may throw Error.
    using Insert = std::function<QCoro::Task<void>(QString)>;

    struct Actions {
        Insert insert;
        std::function<void()> openSettings;
        /// Throws Error if the choice cannot be saved.
        std::function<QCoro::Task<void>(QString)> chooseRecogniser;
        /// The last dictation, or its raw transcript; nullopt if there is none.
        std::function<std::optional<QString>(bool isRaw)> lastDictation;
        /// False if there is no earlier clipboard.
        std::function<QFuture<bool>()> putEarlierClipboardBack;
        /// Pauses the dictation key or resumes it.
        std::function<void(bool isPaused)> setPaused;
        /// Moves the dictation key.
        std::function<void(ControlSocket::KeyCommand)> moveKey = {};
        /// The stages of the last dictation, as a table; nullopt if there is none.
        std::function<std::optional<QString>()> lastTrace = {};
    };

    ControlServer(Actions actions, std::shared_ptr<Clock> clock);

    /// Replaces a stale socket. False, and logged, if the socket cannot be created.
    bool listen(const QString &path);

private:
    void accept();
    void listenTo(QLocalSocket &socket);
    static QCoro::Task<void> hangUpAt(QPointer<QLocalSocket> socket, QFuture<void> deadline);
    void serve(QLocalSocket &socket, const QByteArray &request);
    static QCoro::Task<void> serveClipboard(QPointer<QLocalSocket> socket, QFuture<bool> done);
    static QCoro::Task<void> serveAction(QPointer<QLocalSocket> socket, QString text, Insert action);

    Actions m_actions;
    std::shared_ptr<Clock> m_clock;
    QLocalServer m_server;
};

} // namespace talmo
