#include "Base/Completion.h"
#include "Control/ControlSocket.h"
#include "Platform/Linux/Session/BusStates.h"
#include "Platform/Linux/Session/SessionBus.h"
#include "talmoctl/Command.h"
#include "talmoctl/HeldClipboard.h"
#include "talmoctl/Terminal.h"

#include <QCoro/QCoroFuture>

#include <QDBusConnection>
#include <QJsonDocument>
#include <QJsonObject>

namespace talmo::ctl {

namespace {

QString notRunning()
{
    return QStringLiteral("Talmo is not running; start it first");
}

/// The answer of the Talmo on this display. Throws Error with its message, or if none is running.
QByteArray ask(const QByteArray &request)
{
    constexpr int connectTimeout = 500;
    constexpr int answerTimeout = 3000;
    const auto answer = ControlSocket::exchange(request, connectTimeout, answerTimeout);
    if (!answer) {
        throw Error(notRunning());
    }
    ControlSocket::checkAnswer(*answer);
    return *answer;
}

QCoro::Task<int> runLast(Invocation invocation)
{
    writeLine(ControlSocket::answeredText(ask(ControlSocket::lastDictationRequest(invocation.has("raw")))));
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runTrace(Invocation /*invocation*/)
{
    writeLine(ControlSocket::answeredText(ask(ControlSocket::plainRequest(ControlSocket::Command::LastTrace))));
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runRestoreClipboard(Invocation /*invocation*/)
{
    if (!HeldClipboard::restore()) { // Nobody but Talmo itself keeps any.
        ask(ControlSocket::plainRequest(ControlSocket::Command::RestoreClipboard));
    }
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runPause(Invocation /*invocation*/)
{
    ask(ControlSocket::pauseRequest(true));
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runResume(Invocation /*invocation*/)
{
    ask(ControlSocket::pauseRequest(false));
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runMenu(Invocation /*invocation*/)
{
    ask(ControlSocket::plainRequest(ControlSocket::Command::ToggleMenu));
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> moveKey(ControlSocket::KeyCommand command)
{
    ask(ControlSocket::keyRequest(command));
    co_return EXIT_SUCCESS;
}

/// "error: No speech detected.", or as JSON.
QString describe(const ControlSocket::Status &status, bool asJson)
{
    if (asJson) {
        QJsonObject object{{QStringLiteral("state"), status.state}};
        if (!status.message.isEmpty()) {
            object.insert(QStringLiteral("message"), status.message);
        }
        return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    }
    return status.message.isEmpty() ? status.state : status.state + QStringLiteral(": ") + status.message;
}

QCoro::Task<int> runStatus(Invocation invocation)
{
    const auto status = ControlSocket::answeredStatus(ask(ControlSocket::plainRequest(ControlSocket::Command::Status)));
    writeLine(describe(status, invocation.has("json")));
    co_return EXIT_SUCCESS;
}

/// Prints until Talmo ends or the reader closes the pipe.
QCoro::Task<int> runWatch(Invocation invocation)
{
    keepFromStartingABus();
    BusStates states(QDBusConnection::sessionBus());
    const auto end = Completion<int>::make();
    const bool asJson = invocation.has("json");
    QObject::connect(&states, &BusStates::stateChanged, &states, [asJson, end](const ControlSocket::Status &status) {
        try {
            writeLine(describe(status, asJson));
        } catch (const Error &) {
            end->finish(EXIT_FAILURE);
        }
    });
    QObject::connect(&states, &BusStates::ended, &states, [end] { end->finish(EXIT_SUCCESS); });
    const bool isThere = states.follow();
    if (!isThere) {
        throw Error(notRunning());
    }
    const auto ended = end->future();
    const int status = co_await ended;
    co_return status;
}

} // namespace

QList<Command> stateCommands()
{
    const auto json = [] { return QList<QCommandLineOption>{flag("json", "Print JSON, one object a line.")}; };
    return {{QStringLiteral("status"), QStringLiteral("Print what Talmo is doing."), {}, json(), &runStatus},
            {QStringLiteral("watch"),
             QStringLiteral("Print what Talmo is doing, and every change, until it ends."),
             {},
             json(),
             &runWatch}};
}

QList<Command> keyCommands()
{
    using ControlSocket::KeyCommand;
    return {{QStringLiteral("press"),
             QStringLiteral("Press the dictation key, for use in the desktop's key bindings."),
             {},
             {},
             [](Invocation /*invocation*/) { return moveKey(KeyCommand::Press); }},
            {QStringLiteral("release"),
             QStringLiteral("Release the dictation key."),
             {},
             {},
             [](Invocation /*invocation*/) { return moveKey(KeyCommand::Release); }},
            {QStringLiteral("toggle"),
             QStringLiteral("Start recording hands-free, or end the recording."),
             {},
             {},
             [](Invocation /*invocation*/) { return moveKey(KeyCommand::Toggle); }},
            {QStringLiteral("cancel"),
             QStringLiteral("Discard the recording."),
             {},
             {},
             [](Invocation /*invocation*/) { return moveKey(KeyCommand::Cancel); }},
            {QStringLiteral("menu"),
             QStringLiteral("Open or close Talmo's menu, for use in the desktop's key bindings."),
             {},
             {},
             &runMenu}};
}

QList<Command> pauseCommands()
{
    return {{QStringLiteral("pause"),
             QStringLiteral("Make the dictation key do nothing until it is resumed."),
             {},
             {},
             &runPause},
            {QStringLiteral("resume"), QStringLiteral("Let the dictation key work again."), {}, {}, &runResume}};
}

QList<Command> recoveryCommands()
{
    return {{QStringLiteral("last"),
             QStringLiteral("Print the last dictation."),
             {},
             {flag("raw", "Print the words as they were recognised.")},
             &runLast},
            {QStringLiteral("trace"),
             QStringLiteral("Print how long each stage of the last dictation took."),
             {},
             {},
             &runTrace},
            {QStringLiteral("restore-clipboard"),
             QStringLiteral("Restore the clipboard content from before a failed insertion."),
             {},
             {},
             &runRestoreClipboard}};
}

} // namespace talmo::ctl
