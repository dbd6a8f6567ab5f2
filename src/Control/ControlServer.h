#pragma once

#include "Base/Clock.h"
#include "Control/ControlActions.h"

#include <QCoro/QCoroTask>

#include <QFuture>
#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

namespace talmo {

/// Serves requests from the user's other programs over the control socket. Connections from other users are closed
/// unread, and no client can keep the server busy: the length of a request, the time it may take to arrive and the
/// number of clients are limited. Main thread.
class ControlServer final : public QObject {
public:
    ControlServer(ControlActions actions, std::shared_ptr<Clock> clock);

    /// Replaces a stale socket. False, and logged, if the socket cannot be created.
    bool listen(const QString &path);

private:
    void accept();
    void listenTo(QLocalSocket &socket);
    static QCoro::Task<void> hangUpAt(QPointer<QLocalSocket> socket, QFuture<void> deadline);
    void serve(QLocalSocket &socket, const QByteArray &request);
    static QCoro::Task<void> serveClipboard(QPointer<QLocalSocket> socket, QFuture<bool> done);
    static QCoro::Task<void> serveAction(QPointer<QLocalSocket> socket, QString text, ControlActions::Insert action);

    ControlActions m_actions;
    std::shared_ptr<Clock> m_clock;
    QLocalServer m_server;
};

} // namespace talmo
