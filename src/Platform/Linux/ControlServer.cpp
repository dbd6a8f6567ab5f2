#include "Platform/Linux/ControlServer.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Platform/Linux/ControlSocket.h"

#include <QCoro/QCoroFuture>

#include <memory>
#include <utility>

namespace talmo {

namespace {

void writeAndClose(QLocalSocket &socket, const QByteArray &answer)
{
    socket.write(answer);
    socket.flush();
    socket.disconnectFromServer();
}

void answerAndClose(QLocalSocket &socket, const std::optional<QString> &error)
{
    writeAndClose(socket, ControlSocket::answer(error));
}

QByteArray answerWithDictation(const std::optional<QString> &text)
{
    return text ? ControlSocket::textAnswer(*text)
                : ControlSocket::answer(QStringLiteral("Nothing has been dictated yet."));
}

} // namespace

ControlServer::ControlServer(Actions actions)
    : m_actions(std::move(actions))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &ControlServer::accept);
}

bool ControlServer::listen(const QString &path)
{
    QLocalServer::removeServer(path); // Left behind by one that did not end well.
    if (!m_server.listen(path)) {
        generalLog().error("talmoctl cannot reach this Talmo: %@", {m_server.errorString()});
        return false;
    }
    return true;
}

void ControlServer::accept()
{
    while (auto *socket = m_server.nextPendingConnection()) {
        socket->setParent(this);
        socket->setReadBufferSize(ControlSocket::largestRequest);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto request = std::make_shared<QByteArray>();
        connect(socket, &QLocalSocket::readyRead, this, [this, socket, request] {
            const bool isComplete = request->endsWith('\n');
            request->append(socket->readAll());
            if (isComplete) {
                return; // One request a connection; what follows is nothing.
            }
            if (request->endsWith('\n')) {
                serve(*socket, *request);
            } else if (request->size() > ControlSocket::largestRequest) {
                answerAndClose(*socket, QStringLiteral("The text is too long."));
            }
        });
    }
}

void ControlServer::serve(QLocalSocket &socket, const QByteArray &request)
{
    if (ControlSocket::asksForSettings(request)) {
        m_actions.openSettings();
        answerAndClose(socket, std::nullopt);
        return;
    }
    if (const auto choice = ControlSocket::recogniserToUse(request)) {
        m_actions.chooseRecogniser(*choice);
        answerAndClose(socket, std::nullopt);
        return;
    }
    if (const auto isRaw = ControlSocket::asksForLastDictation(request)) {
        writeAndClose(socket, answerWithDictation(m_actions.lastDictation(*isRaw)));
        return;
    }
    if (ControlSocket::asksForEarlierClipboard(request)) {
        logEscapes(serveClipboard(&socket, m_actions.putEarlierClipboardBack()));
        return;
    }
    const auto text = ControlSocket::textToInsert(request);
    if (!text) {
        answerAndClose(socket, QStringLiteral("Talmo does not know this request."));
        return;
    }
    logEscapes(serveInsertion(&socket, *text, m_actions.insert));
}

QCoro::Task<void> ControlServer::serveClipboard(QPointer<QLocalSocket> socket, QFuture<bool> done)
{
    const bool isBack = co_await done;
    if (socket) {
        answerAndClose(*socket, isBack ? std::nullopt
                                       : std::optional(QStringLiteral("There is no earlier clipboard to restore.")));
    }
}

QCoro::Task<void> ControlServer::serveInsertion(QPointer<QLocalSocket> socket, QString text, Insert insert)
{
    std::optional<QString> problem;
    try {
        co_await insert(text);
    } catch (const Error &error) {
        problem = error.localizedDescription();
    }
    if (socket) {
        answerAndClose(*socket, problem);
    }
}

} // namespace talmo
