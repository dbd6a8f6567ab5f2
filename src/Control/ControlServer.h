#pragma once

#include "Base/Clock.h"
#include "Control/ControlActions.h"

#include <QCoro/QCoroTask>

#include <QFuture>
#include <QHash>
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
    /// A request whose action is null is unknown. Longer requests than `largestRequest`, in bytes, are refused.
    ControlServer(const ControlActions &actions, std::shared_ptr<Clock> clock,
                  qint64 largestRequest = ControlSocket::largestRequest);

    /// Replaces a stale socket. False, and logged, if the socket cannot be created.
    bool listen(const QString &path);

private:
    void accept();
    void listenTo(QLocalSocket &socket);
    static QCoro::Task<void> hangUpAt(QPointer<QLocalSocket> socket, QFuture<void> deadline);
    void serve(QLocalSocket &socket, const QByteArray &request);

    /// Serves a request for one command.
    using Handler = std::function<void(QLocalSocket &, const QByteArray &request)>;
    using Handlers = QHash<ControlSocket::Command, Handler>;
    static Handlers handlersFor(const ControlActions &actions);
    static void serveText(QLocalSocket &socket, const std::optional<QString> &text,
                          const ControlActions::Insert &action);
    static QCoro::Task<void> serveClipboard(QPointer<QLocalSocket> socket, QFuture<bool> done);
    static QCoro::Task<void> serveAction(QPointer<QLocalSocket> socket, QString text, ControlActions::Insert action);

    Handlers m_handlers;
    std::shared_ptr<Clock> m_clock;
    qint64 m_largestRequest;
    QLocalServer m_server;
};

} // namespace talmo
