#include "Control/ControlSocket.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"

namespace talmo::ctl {

namespace {

/// The answer of the Talmo on this display. Throws Error with its message, or if none is running.
QByteArray ask(const QByteArray &request)
{
    constexpr int connectTimeout = 500;
    constexpr int answerTimeout = 3000;
    const auto answer = ControlSocket::exchange(request, connectTimeout, answerTimeout);
    if (!answer) {
        throw Error(QStringLiteral("Talmo is not running; start it first"));
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
    writeLine(ControlSocket::answeredText(ask(ControlSocket::traceRequest())));
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runRestoreClipboard(Invocation /*invocation*/)
{
    ask(ControlSocket::earlierClipboardRequest());
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

QCoro::Task<int> moveKey(ControlSocket::KeyCommand command)
{
    ask(ControlSocket::keyRequest(command));
    co_return EXIT_SUCCESS;
}

} // namespace

QList<Command> keyCommands()
{
    using ControlSocket::KeyCommand;
    return {{QStringLiteral("press"),
             QStringLiteral("Press the dictation key, for a key that is bound to a command."),
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
             [](Invocation /*invocation*/) { return moveKey(KeyCommand::Toggle); }}};
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
