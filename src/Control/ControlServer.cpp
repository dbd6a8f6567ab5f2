#include "Control/ControlServer.h"

#include "Base/CancellableWait.h"
#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Control/ControlSocket.h"

#include <QCoro/QCoroFuture>

#include <memory>
#include <stop_token>
#include <utility>

namespace talmo {

namespace {

constexpr qsizetype mostClients = 32;
/// From the connection to the end of the request. Local programs need milliseconds, even for the longest text.
constexpr Duration longestRequestTime = std::chrono::seconds(5);

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
    return text ? ControlSocket::textAnswer(*text) : ControlSocket::answer(QString::fromUtf8(nothingDictated));
}

void refuseUnknown(QLocalSocket &socket)
{
    answerAndClose(socket, QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Unknown request.")));
}

auto answeringAfter(std::function<void()> action)
{
    return [action = std::move(action)](QLocalSocket &socket, const QByteArray &) {
        action();
        answerAndClose(socket, std::nullopt);
    };
}

} // namespace

ControlServer::ControlServer(const ControlActions &actions, std::shared_ptr<Clock> clock, qint64 largestRequest)
    : m_handlers(handlersFor(actions)),
      m_clock(std::move(clock)),
      m_largestRequest(largestRequest)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &ControlServer::accept);
}

bool ControlServer::listen(const QString &path)
{
    QLocalServer::removeServer(path); // A stale socket left by a crash.
    if (!m_server.listen(path)) {
        generalLog().error("cannot listen on the control socket, so talmoctl cannot reach this process: %@",
                           {m_server.errorString()});
        return false;
    }
    return true;
}

void ControlServer::accept()
{
    while (auto *socket = m_server.nextPendingConnection()) {
        socket->setParent(this);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        if (!ControlSocket::isOwnUser(*socket)) {
            generalLog().error("rejected a connection to the control socket by another user's process");
            socket->abort();
        } else if (findChildren<QLocalSocket *>(Qt::FindDirectChildrenOnly).size() > mostClients) {
            generalLog().error("rejected a connection to the control socket: too many clients");
            socket->abort(); // Its request is not read, so it could not receive an answer either.
        } else {
            listenTo(*socket);
        }
    }
}

/// One request per connection; anything after it is read and dropped.
void ControlServer::listenTo(QLocalSocket &socket)
{
    socket.setReadBufferSize(m_largestRequest);
    const auto request = std::make_shared<QByteArray>();
    const std::stop_source over;
    connect(&socket, &QLocalSocket::readyRead, this, [this, &socket, request, over]() mutable {
        const QByteArray bytes = socket.readAll();
        if (over.stop_requested()) {
            return;
        }
        request->append(bytes);
        const bool isTooLong = request->size() > m_largestRequest;
        if (!isTooLong && !request->endsWith('\n')) {
            return;
        }
        over.request_stop();
        const QByteArray whole = std::exchange(*request, {});
        if (isTooLong) {
            answerAndClose(socket, QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The text is too long.")));
        } else {
            serve(socket, whole);
        }
    });
    connect(&socket, &QObject::destroyed, [over]() mutable { over.request_stop(); });
    logEscapes(hangUpAt(&socket, m_clock->sleep(longestRequestTime, over.get_token())));
}

QCoro::Task<void> ControlServer::hangUpAt(QPointer<QLocalSocket> socket, QFuture<void> deadline)
{
    // Cancelled once the request has arrived, or the client has disconnected.
    const bool isDue = co_await isTimeUp(deadline);
    if (isDue && socket) {
        answerAndClose(*socket, QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The request took too long to arrive.")));
    }
}

void ControlServer::serve(QLocalSocket &socket, const QByteArray &request)
{
    const auto command = ControlSocket::commandOf(request);
    const auto handler = command ? m_handlers.find(*command) : m_handlers.end();
    if (handler == m_handlers.end()) {
        refuseUnknown(socket);
    } else {
        (*handler)(socket, request);
    }
}

ControlServer::Handlers ControlServer::handlersFor(const ControlActions &actions)
{
    using Command = ControlSocket::Command;
    Handlers handlers;
    const auto add = [&handlers](const auto &action, Command command, const Handler &handler) {
        if (action) {
            handlers.insert(command, handler);
        }
    };
    add(actions.insert, Command::Insert, [insert = actions.insert](QLocalSocket &socket, const QByteArray &request) {
        serveText(socket, ControlSocket::textToInsert(request), insert);
    });
    add(actions.chooseRecogniser, Command::UseRecogniser,
        [choose = actions.chooseRecogniser](QLocalSocket &socket, const QByteArray &request) {
            serveText(socket, ControlSocket::recogniserToUse(request), choose);
        });
    add(actions.lastDictation, Command::LastDictation,
        [last = actions.lastDictation](QLocalSocket &socket, const QByteArray &request) {
            writeAndClose(socket, answerWithDictation(last(ControlSocket::isRawRequested(request))));
        });
    add(actions.lastTrace, Command::LastTrace, [last = actions.lastTrace](QLocalSocket &socket, const QByteArray &) {
        writeAndClose(socket, answerWithDictation(last()));
    });
    add(actions.putEarlierClipboardBack, Command::RestoreClipboard,
        [restore = actions.putEarlierClipboardBack](QLocalSocket &socket, const QByteArray &) {
            logEscapes(serveClipboard(&socket, restore()));
        });
    add(actions.status, Command::Status, [status = actions.status](QLocalSocket &socket, const QByteArray &) {
        writeAndClose(socket, ControlSocket::statusAnswer(status()));
    });
    add(actions.openSettings, Command::OpenSettings, answeringAfter(actions.openSettings));
    add(actions.toggleMenu, Command::ToggleMenu, answeringAfter(actions.toggleMenu));
    const auto pausing = [set = actions.setPaused](bool isPaused) {
        return answeringAfter([set, isPaused] { set(isPaused); });
    };
    add(actions.setPaused, Command::Pause, pausing(true));
    add(actions.setPaused, Command::Resume, pausing(false));
    using Key = ControlSocket::KeyCommand;
    const std::pair<Command, Key> keys[] = {{Command::PressKey, Key::Press},
                                            {Command::ReleaseKey, Key::Release},
                                            {Command::ToggleKey, Key::Toggle},
                                            {Command::Cancel, Key::Cancel}};
    for (const auto &[command, key] : keys) {
        add(actions.moveKey, command, answeringAfter([move = actions.moveKey, moved = key] { move(moved); }));
    }
    return handlers;
}

void ControlServer::serveText(QLocalSocket &socket, const std::optional<QString> &text,
                              const ControlActions::Insert &action)
{
    if (text) {
        logEscapes(serveAction(&socket, *text, action));
    } else {
        refuseUnknown(socket);
    }
}

QCoro::Task<void> ControlServer::serveClipboard(QPointer<QLocalSocket> socket, QFuture<bool> done)
{
    const bool isBack = co_await done;
    if (socket) {
        answerAndClose(*socket, isBack ? std::nullopt
                                       : std::optional(QStringLiteral(
                                             QT_TRANSLATE_NOOP("Talmo", "There is no earlier clipboard to restore."))));
    }
}

QCoro::Task<void> ControlServer::serveAction(QPointer<QLocalSocket> socket, QString text, ControlActions::Insert action)
{
    std::optional<QString> problem;
    try {
        co_await action(text);
    } catch (const Error &error) {
        problem = error.localizedDescription();
    }
    if (socket) {
        answerAndClose(*socket, problem);
    }
}

} // namespace talmo
