#include "Control/ControlSocket.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QUrl>

#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace talmo::ControlSocket {

namespace {

const QString commandKey = QStringLiteral("command");
const QString textKey = QStringLiteral("text");
const QString choiceKey = QStringLiteral("choice");
const QString errorKey = QStringLiteral("error");
const QString rawKey = QStringLiteral("raw");
const QString stateKey = QStringLiteral("state");
const QString messageKey = QStringLiteral("message");

const QHash<QString, Command> &commands()
{
    static const QHash<QString, Command> all{{QStringLiteral("insert"), Command::Insert},
                                             {QStringLiteral("settings"), Command::OpenSettings},
                                             {QStringLiteral("menu"), Command::ToggleMenu},
                                             {QStringLiteral("recogniser"), Command::UseRecogniser},
                                             {QStringLiteral("last"), Command::LastDictation},
                                             {QStringLiteral("trace"), Command::LastTrace},
                                             {QStringLiteral("restore-clipboard"), Command::RestoreClipboard},
                                             {QStringLiteral("pause"), Command::Pause},
                                             {QStringLiteral("resume"), Command::Resume},
                                             {QStringLiteral("press"), Command::PressKey},
                                             {QStringLiteral("release"), Command::ReleaseKey},
                                             {QStringLiteral("toggle"), Command::ToggleKey},
                                             {QStringLiteral("cancel"), Command::Cancel},
                                             {QStringLiteral("status"), Command::Status}};
    return all;
}

/// Without byte-order marks at the beginning of a text: a reader may drop the first one or keep it.
QByteArray line(QJsonObject object)
{
    for (auto value : object) {
        QString text = value.toString();
        while (text.startsWith(QChar::ByteOrderMark)) {
            text.remove(0, 1);
            value = text;
        }
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray request(Command command, QJsonObject object = {})
{
    object.insert(commandKey, commands().key(command));
    return line(std::move(object));
}

QJsonValue valueIn(const QByteArray &request, const QString &key)
{
    return QJsonDocument::fromJson(request).object().value(key);
}

std::optional<QString> textIn(const QByteArray &request, const QString &key)
{
    const auto value = valueIn(request, key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

/// ":0" for ":0.0": the screen after the dot is the same display. On Wayland too Talmo has an X server, since its
/// windows need one, and no other session has the same.
QString displayName()
{
    // talmoctl answers without an X server as well; then the compositor says which session this is.
    const QString name = qEnvironmentVariable(qEnvironmentVariableIsEmpty("DISPLAY") ? "WAYLAND_DISPLAY" : "DISPLAY");
    const auto colon = name.lastIndexOf(QLatin1Char(':'));
    const auto dot = name.indexOf(QLatin1Char('.'), colon);
    return colon >= 0 && dot >= 0 ? name.left(dot) : name;
}

} // namespace

QString path()
{
    const QString file = QString::fromLatin1(QUrl::toPercentEncoding(displayName(), ":"));
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/talmo") + file;
}

QString lockPath()
{
    return path() + QStringLiteral(".lock");
}

std::optional<Command> commandOf(const QByteArray &request)
{
    const auto found = commands().find(valueIn(request, commandKey).toString());
    return found == commands().end() ? std::nullopt : std::optional(*found);
}

QByteArray insertRequest(const QString &text)
{
    return request(Command::Insert, {{textKey, text}});
}

std::optional<QString> textToInsert(const QByteArray &request)
{
    return textIn(request, textKey);
}

QByteArray recogniserRequest(const QString &choice)
{
    return request(Command::UseRecogniser, {{choiceKey, choice}});
}

std::optional<QString> recogniserToUse(const QByteArray &request)
{
    return textIn(request, choiceKey);
}

QByteArray lastDictationRequest(bool isRaw)
{
    return request(Command::LastDictation, {{rawKey, isRaw}});
}

bool isRawRequested(const QByteArray &request)
{
    return valueIn(request, rawKey).toBool();
}

QByteArray pauseRequest(bool isPaused)
{
    return plainRequest(isPaused ? Command::Pause : Command::Resume);
}

QByteArray keyRequest(KeyCommand command)
{
    switch (command) {
    case KeyCommand::Press:
        return plainRequest(Command::PressKey);
    case KeyCommand::Release:
        return plainRequest(Command::ReleaseKey);
    case KeyCommand::Toggle:
        return plainRequest(Command::ToggleKey);
    case KeyCommand::Cancel:
        return plainRequest(Command::Cancel);
    }
    return {};
}

QByteArray plainRequest(Command command)
{
    return request(command);
}

bool isOwnUser(const QLocalSocket &socket)
{
    ucred peer{};
    socklen_t size = sizeof(peer);
    return ::getsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == ::geteuid();
}

std::optional<QByteArray> exchange(const QByteArray &request, int connectTimeout, int answerTimeout,
                                   const QString &socketPath)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(connectTimeout)) {
        return std::nullopt;
    }
    if (!isOwnUser(socket)) {
        generalLog().error("another user's process is listening at %@; nothing was sent to it", {socketPath});
        return std::nullopt;
    }
    socket.write(request);
    const QDeadlineTimer deadline(answerTimeout);
    QByteArray received;
    while (!received.endsWith('\n') && !deadline.hasExpired() &&
           (socket.bytesAvailable() > 0 || socket.waitForReadyRead(static_cast<int>(deadline.remainingTime())))) {
        received += socket.readAll();
        if (received.size() > largestRequest) {
            return QByteArray();
        }
    }
    return received;
}

QByteArray answer(const std::optional<QString> &error)
{
    return line(error ? QJsonObject{{errorKey, *error}} : QJsonObject());
}

QByteArray textAnswer(const QString &text)
{
    return line({{textKey, text}});
}

QString answeredText(const QByteArray &answer)
{
    return QJsonDocument::fromJson(answer).object().value(textKey).toString();
}

QByteArray statusAnswer(const Status &status)
{
    return line({{stateKey, status.state}, {messageKey, status.message}});
}

Status answeredStatus(const QByteArray &answer)
{
    const auto object = QJsonDocument::fromJson(answer).object();
    return {object.value(stateKey).toString(), object.value(messageKey).toString()};
}

void checkAnswer(const QByteArray &answer)
{
    const auto document = QJsonDocument::fromJson(answer);
    if (!document.isObject()) {
        throw Error(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Talmo did not respond.")));
    }
    const auto error = document.object().value(errorKey);
    if (!error.isUndefined()) {
        throw Error(error.toString());
    }
}

} // namespace talmo::ControlSocket
