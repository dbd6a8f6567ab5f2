#include "talmoctl/HeldClipboard.h"

#include "Base/Log.h"
#include "Base/Task.h"
#include "Control/ControlSocket.h"

#include <QCoro/QCoroFuture>

#include <QTimer>

#include <chrono>
#include <utility>

namespace talmo::ctl {

namespace {

constexpr int mostClients = 4;
constexpr qint64 mostBytes = 4096;
constexpr std::chrono::seconds longestRequestTime{5};

/// Beside the socket of a running Talmo, which may start in the meantime.
QString path()
{
    return ControlSocket::path() + QStringLiteral(".held");
}

} // namespace

HeldClipboard::HeldClipboard(std::shared_ptr<PasteWitness> witness)
    : m_witness(std::move(witness))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    m_server.setMaxPendingConnections(mostClients);
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
        while (auto *socket = m_server.nextPendingConnection()) {
            QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            serve(*socket);
        }
    });
    QLocalServer::removeServer(path()); // Whoever kept something before has lost the clipboard to this process.
    if (!m_server.listen(path())) {
        generalLog().error("cannot listen, so the next command cannot restore the clipboard: %@",
                           {m_server.errorString()});
    }
}

/// Whatever is sent: there is only one thing to ask for.
void HeldClipboard::serve(QLocalSocket &socket)
{
    if (!ControlSocket::isOwnUser(socket)) {
        socket.abort();
        return;
    }
    socket.setReadBufferSize(mostBytes);
    QTimer::singleShot(longestRequestTime, &socket, [&socket] { socket.abort(); });
    QObject::connect(
        &socket, &QLocalSocket::readyRead, &socket, [this, &socket] { logEscapes(putBack(m_witness, &socket)); },
        Qt::SingleShotConnection);
}

QCoro::Task<void> HeldClipboard::putBack(std::shared_ptr<PasteWitness> witness, QPointer<QLocalSocket> socket)
{
    const auto restoring = witness->putEarlierClipboardBack();
    const bool isBack = co_await restoring;
    if (socket) {
        socket->write(ControlSocket::answer(isBack ? std::nullopt : std::optional(QString())));
        socket->flush();
        socket->disconnectFromServer();
    }
}

bool HeldClipboard::restore()
{
    constexpr int connectTimeout = 500;
    constexpr int answerTimeout = 3000;
    const auto answer = ControlSocket::exchange(ControlSocket::plainRequest(ControlSocket::Command::RestoreClipboard),
                                                connectTimeout, answerTimeout, path());
    return answer == ControlSocket::answer(std::nullopt);
}

} // namespace talmo::ctl
