#include "Control/ControlSocket.h"

#include "Base/Error.h"
#include "Base/Log.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QUrl>

#include <sys/socket.h>
#include <unistd.h>

namespace talmo::ControlSocket {

namespace {

const QString commandKey = QStringLiteral("command");
const QString textKey = QStringLiteral("text");
const QString choiceKey = QStringLiteral("choice");
const QString errorKey = QStringLiteral("error");
const QString insertCommand = QStringLiteral("insert");
const QString settingsCommand = QStringLiteral("settings");
const QString recogniserCommand = QStringLiteral("recogniser");
const QString lastCommand = QStringLiteral("last");
const QString rawKey = QStringLiteral("raw");
const QString traceCommand = QStringLiteral("trace");
const QString earlierClipboardCommand = QStringLiteral("restore-clipboard");
const QString menuCommand = QStringLiteral("menu");
const QString pauseCommand = QStringLiteral("pause");
const QString resumeCommand = QStringLiteral("resume");
const QString statusCommand = QStringLiteral("status");
const QString stateKey = QStringLiteral("state");
const QString messageKey = QStringLiteral("message");

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

/// In the order of KeyCommand.
const QStringList &keyCommands()
{
    static const QStringList all = {QStringLiteral("press"), QStringLiteral("release"), QStringLiteral("toggle"),
                                    QStringLiteral("cancel")};
    return all;
}

/// ":0" for ":0.0": the screen after the dot is the same display.
QString displayName()
{
    // Without an X server, the name of the Wayland display says which session this is.
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

QByteArray insertRequest(const QString &text)
{
    return line({{commandKey, insertCommand}, {textKey, text}});
}

std::optional<QString> textToInsert(const QByteArray &request)
{
    const auto object = QJsonDocument::fromJson(request).object();
    const auto text = object.value(textKey);
    return object.value(commandKey) == insertCommand && text.isString() ? std::optional(text.toString()) : std::nullopt;
}

QByteArray settingsRequest()
{
    return line({{commandKey, settingsCommand}});
}

bool asksForSettings(const QByteArray &request)
{
    return QJsonDocument::fromJson(request).object().value(commandKey) == settingsCommand;
}

QByteArray menuRequest()
{
    return line({{commandKey, menuCommand}});
}

bool asksForMenu(const QByteArray &request)
{
    return QJsonDocument::fromJson(request).object().value(commandKey) == menuCommand;
}

QByteArray recogniserRequest(const QString &choice)
{
    return line({{commandKey, recogniserCommand}, {choiceKey, choice}});
}

std::optional<QString> recogniserToUse(const QByteArray &request)
{
    const auto object = QJsonDocument::fromJson(request).object();
    const auto choice = object.value(choiceKey);
    return object.value(commandKey) == recogniserCommand && choice.isString() ? std::optional(choice.toString())
                                                                              : std::nullopt;
}

QByteArray lastDictationRequest(bool isRaw)
{
    return line({{commandKey, lastCommand}, {rawKey, isRaw}});
}

std::optional<bool> asksForLastDictation(const QByteArray &request)
{
    const auto object = QJsonDocument::fromJson(request).object();
    return object.value(commandKey) == lastCommand ? std::optional(object.value(rawKey).toBool()) : std::nullopt;
}

QByteArray traceRequest()
{
    return line({{commandKey, traceCommand}});
}

bool asksForTrace(const QByteArray &request)
{
    return QJsonDocument::fromJson(request).object().value(commandKey) == traceCommand;
}

QByteArray earlierClipboardRequest()
{
    return line({{commandKey, earlierClipboardCommand}});
}

bool asksForEarlierClipboard(const QByteArray &request)
{
    return QJsonDocument::fromJson(request).object().value(commandKey) == earlierClipboardCommand;
}

QByteArray pauseRequest(bool isPaused)
{
    return line({{commandKey, isPaused ? pauseCommand : resumeCommand}});
}

std::optional<bool> pauseToSet(const QByteArray &request)
{
    const auto command = QJsonDocument::fromJson(request).object().value(commandKey);
    return command == pauseCommand || command == resumeCommand ? std::optional(command == pauseCommand) : std::nullopt;
}

QByteArray keyRequest(KeyCommand command)
{
    return line({{commandKey, keyCommands().at(static_cast<int>(command))}});
}

std::optional<KeyCommand> keyToMove(const QByteArray &request)
{
    const auto index = keyCommands().indexOf(QJsonDocument::fromJson(request).object().value(commandKey).toString());
    return index >= 0 ? std::optional(static_cast<KeyCommand>(index)) : std::nullopt;
}

QByteArray statusRequest()
{
    return line({{commandKey, statusCommand}});
}

bool asksForStatus(const QByteArray &request)
{
    return QJsonDocument::fromJson(request).object().value(commandKey) == statusCommand;
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
