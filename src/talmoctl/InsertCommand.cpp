#include "Control/ControlSocket.h"
#include "Files/FileLock.h"
#include "Insertion/ClipboardPasteInsertionService.h"
#include "Insertion/PasswordFieldGuard.h"
#include "Insertion/VerifiedInsertionService.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Platform/Pasting.h"
#include "talmoctl/Background.h"
#include "talmoctl/Command.h"
#include "talmoctl/HeldClipboard.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QCoro/QCoroFuture>

#include <optional>

namespace talmo::ctl {

namespace {

/// The kernel has no timeout for a lock.
constexpr Duration turnInterval = std::chrono::milliseconds(10);
constexpr Duration longestTurn = std::chrono::seconds(8);

QString turnPath()
{
    return ControlSocket::path() + QStringLiteral(".paste");
}

/// Asks the Talmo on this display to insert the text; false if none is running. Throws Error with its message, or if it
/// does not answer in time: it may still insert the text then, so the caller must not try again itself.
bool insertThroughTalmo(const QString &text)
{
    constexpr int connectTimeout = 500;
    constexpr int answerTimeout = 8000; // A dictation may have to be inserted first.
    const auto answer = ControlSocket::exchange(ControlSocket::insertRequest(text), connectTimeout, answerTimeout);
    if (!answer) {
        return false;
    }
    ControlSocket::checkAnswer(*answer);
    return true;
}

bool guardsPasswordFields()
{
    const UserSettings settings;
    return settings.defaults->boolean(LinuxSettings::guardPasswordFieldsKey()).value_or(true);
}

/// Inserts without a running Talmo. The process stays in the background for as long as the clipboard needs an owner:
/// until the earlier content has been restored, and then until a clipboard manager or another program takes over. The
/// next one waits for the restore, or asks for it if nothing has read this text, since it would otherwise take the text
/// for the user's clipboard.
QCoro::Task<int> insertAlone(QString text, std::shared_ptr<Background> background)
{
    const std::shared_ptr<Clock> clock = std::make_shared<TimerFdClock>();
    std::optional<FileLock> turn;
    const Instant latest = clock->now() + longestTurn;
    for (turn.emplace(turnPath()); turn->outcome() == FileLock::Outcome::HeldByAnother; turn.emplace(turnPath())) {
        if (clock->now() >= latest) {
            throw Error(QStringLiteral("Another paste has not finished. Try again in a moment."));
        }
        const auto pause = clock->sleep(turnInterval);
        co_await pause;
    }
    HeldClipboard::restore();
    const Pasting desktop = openPasting();
    desktop.setOnLoss(
        [] { complain(QStringLiteral("Part of the clipboard was lost. Copy it again if you need it.")); });
    const auto pasting = std::make_shared<ClipboardPasteInsertionService>(desktop.pasteboard, desktop.keyPoster,
                                                                          desktop.inputTrust, clock);
    const auto verified = std::make_shared<VerifiedInsertionService>(pasting, desktop.witness);
    PasswordFieldGuard service(verified, desktop.focusedField, clock, &guardsPasswordFields);
    int status = EXIT_SUCCESS;
    std::optional<HeldClipboard> held;
    try {
        co_await service.insert(text);
    } catch (const PasswordFieldError &) {
        // Its own text names a menu that is not there without Talmo.
        complain(QStringLiteral("The cursor is in a password field, so nothing was pasted."));
        status = EXIT_FAILURE;
    } catch (const TextNotTakenError &error) {
        complain(error.localizedDescription());
        status = EXIT_FAILURE;
        held.emplace(desktop.witness, clock); // Before the caller goes on: its next command may come at once.
    }
    background->release(status);
    co_await desktop.pasteboard->settled();
    turn.reset();
    if (held) {
        // Before that, a clipboard manager would take the text, and the earlier content would be lost.
        co_await desktop.ownershipLost();
        held.reset();
    }
    co_await desktop.shutDown();
    co_await desktop.ownershipLost();
    co_return status;
}

QCoro::Task<int> runInsert(Invocation invocation)
{
    QString text = readInput();
    if (!invocation.has("raw") && text.endsWith(QLatin1Char('\n'))) {
        text.chop(1); // Commands such as echo end their output with a newline that is not part of the text.
    }
    if (text.isEmpty()) {
        throw Error(QStringLiteral("nothing to insert; pass the text on stdin"));
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
            QStringLiteral("Paste text from stdin into the active window, then restore the clipboard."),
            {},
            {flag("raw", "Keep the newline at the end of the input.")},
            &runInsert};
}

} // namespace talmo::ctl
