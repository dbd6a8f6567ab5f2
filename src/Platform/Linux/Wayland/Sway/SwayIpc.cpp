#include "Platform/Linux/Wayland/Sway/SwayIpc.h"

#include "Base/Log.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>
#include <optional>
#include <utility>

namespace talmo {

namespace {

constexpr int timeout = 500; // Milliseconds.
const QByteArray magic = QByteArrayLiteral("i3-ipc");
constexpr qsizetype numberSize = sizeof(quint32);
constexpr quint32 workspaceEvent = 0x80000000;
constexpr quint32 bindingEvent = 0x80000005;
const QString mark = QStringLiteral("nop talmo ");

QByteArray bytesOf(quint32 number)
{
    QByteArray bytes(numberSize, '\0');
    std::memcpy(bytes.data(), &number, sizeof(number));
    return bytes;
}

quint32 numberAt(const QByteArray &bytes, qsizetype place)
{
    quint32 number = 0;
    std::memcpy(&number, bytes.constData() + place, sizeof(number));
    return number;
}

} // namespace

std::unique_ptr<SwayIpc> SwayIpc::open()
{
    const QString path = qEnvironmentVariable("SWAYSOCK");
    std::unique_ptr<SwayIpc> ipc(new SwayIpc);
    return !path.isEmpty() && ipc->connectTo(path) ? std::move(ipc) : nullptr;
}

SwayIpc::~SwayIpc()
{
    m_events.disconnect(); // Its own end is no loss.
}

bool SwayIpc::connectTo(const QString &path)
{
    for (auto *socket : {&m_commands, &m_events}) {
        socket->connectToServer(path);
        if (!socket->waitForConnected(timeout)) {
            return false;
        }
    }
    send(m_events, Message::Subscribe, R"(["binding","workspace"])");
    const auto answer = waitForMessage(m_events, m_eventBytes);
    if (!answer || !QJsonDocument::fromJson(answer->payload).object().value(QStringLiteral("success")).toBool()) {
        return false;
    }
    QObject::connect(&m_events, &QLocalSocket::readyRead, &m_events, [this] { readEvents(); });
    QObject::connect(&m_events, &QLocalSocket::disconnected, &m_events,
                     [] { generalLog().error("the connection to sway was lost"); });
    return true;
}

QString SwayIpc::bindingCommand(const QString &words)
{
    return mark + words;
}

bool SwayIpc::run(const QString &command)
{
    send(m_commands, Message::RunCommand, command.toUtf8());
    const auto answer = waitForMessage(m_commands, m_commandBytes);
    const auto results = answer ? QJsonDocument::fromJson(answer->payload).array() : QJsonArray();
    bool isDone = !results.isEmpty();
    for (const auto &result : results) {
        isDone = isDone && result.toObject().value(QStringLiteral("success")).toBool();
    }
    if (!isDone) {
        generalLog().error("sway did not accept a command: %@ (%@)",
                           {command, answer ? QString::fromUtf8(answer->payload) : QStringLiteral("no answer")});
    }
    return isDone;
}

void SwayIpc::send(QLocalSocket &socket, Message type, const QByteArray &payload)
{
    socket.write(magic + bytesOf(static_cast<quint32>(payload.size())) + bytesOf(static_cast<quint32>(type)) + payload);
    socket.flush();
}

std::optional<SwayIpc::Received> SwayIpc::takeMessage(QByteArray &bytes)
{
    const qsizetype headerSize = magic.size() + 2 * numberSize;
    if (bytes.size() < headerSize) {
        return std::nullopt;
    }
    const qsizetype size = numberAt(bytes, magic.size());
    if (bytes.size() < headerSize + size) {
        return std::nullopt;
    }
    Received message{numberAt(bytes, magic.size() + numberSize), bytes.mid(headerSize, size)};
    bytes.remove(0, headerSize + size);
    return message;
}

std::optional<SwayIpc::Received> SwayIpc::waitForMessage(QLocalSocket &socket, QByteArray &bytes)
{
    const QDeadlineTimer deadline(timeout);
    auto message = takeMessage(bytes);
    while (!message && socket.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
        bytes += socket.readAll();
        message = takeMessage(bytes);
    }
    return message;
}

void SwayIpc::readEvents()
{
    m_eventBytes += m_events.readAll();
    while (const auto event = takeMessage(m_eventBytes)) {
        handleEvent(*event);
    }
}

void SwayIpc::handleEvent(const Received &event)
{
    const auto object = QJsonDocument::fromJson(event.payload).object();
    if (event.type == bindingEvent) {
        const QString command =
            object.value(QStringLiteral("binding")).toObject().value(QStringLiteral("command")).toString();
        if (command.startsWith(mark) && m_onBinding) {
            m_onBinding(command.mid(mark.size()));
        }
    } else if (event.type == workspaceEvent && object.value(QStringLiteral("change")) == QLatin1String("reload") &&
               m_onReload) {
        m_onReload();
    }
}

} // namespace talmo
