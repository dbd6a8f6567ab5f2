#include "Control/ControlSocket.h"
#include "Insertion/ClipboardPasteInsertionService.h"
#include "Insertion/VerifiedInsertionService.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Platform/Pasting.h"
#include "talmoctl/Background.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"

#include <QCoro/QCoroFuture>

namespace talmo::ctl {

namespace {

/// True when the Talmo that runs on this display has inserted the text, false when there is none. Throws what it says,
/// and when it says nothing for too long: the text may have been inserted all the same, so nobody else tries then.
bool insertThroughTalmo(const QString &text)
{
    constexpr int connectPatience = 500;
    constexpr int answerPatience = 8000; // A dictation that is being inserted comes first.
    const auto answer = ControlSocket::exchange(ControlSocket::insertRequest(text), connectPatience, answerPatience);
    if (!answer) {
        return false;
    }
    ControlSocket::checkAnswer(*answer);
    return true;
}

/// Inserts as Talmo does, and stays behind the caller's back for as long as the clipboard needs an owner: until what
/// stood there is back, and then until a clipboard manager or another program has taken it over.
QCoro::Task<int> insertAlone(QString text, std::shared_ptr<Background> background)
{
    const Pasting desktop = openPasting();
    const auto pasting = std::make_shared<ClipboardPasteInsertionService>(
        desktop.pasteboard, desktop.keyPoster, desktop.inputTrust, std::make_shared<TimerFdClock>());
    VerifiedInsertionService service(pasting, desktop.witness);
    int status = EXIT_SUCCESS;
    try {
        co_await service.insert(text);
    } catch (const TextNotTakenError &error) {
        complain(error.localizedDescription());
        status = EXIT_FAILURE; // And stays: the text is on the clipboard.
    }
    background->release(status);
    co_await desktop.shutDown();
    co_await desktop.ownershipLost();
    co_return status;
}

QCoro::Task<int> runInsert(Invocation invocation)
{
    QString text = readInput();
    if (!invocation.has("raw") && text.endsWith(QLatin1Char('\n'))) {
        text.chop(1); // What ended the line for the shell is none that was meant.
    }
    if (text.isEmpty()) {
        throw Error(QStringLiteral("there is nothing to insert"));
    }
    if (insertThroughTalmo(text)) {
        co_return EXIT_SUCCESS;
    }
    const int status = co_await insertAlone(text, invocation.background);
    co_return status;
}

} // namespace

Command insertCommand()
{
    return {QStringLiteral("insert"),
            QStringLiteral("Paste the text on standard input into the window in front; the clipboard comes back."),
            {},
            {flag("raw", "Insert a line end at the end of the input too.")},
            &runInsert};
}

} // namespace talmo::ctl
