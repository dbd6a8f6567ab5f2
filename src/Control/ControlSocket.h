#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class QLocalSocket;

namespace talmo {

/// The protocol between the user's other programs and the Talmo on this display: a socket with one request and one
/// answer per connection, each a line of JSON.
namespace ControlSocket {

/// Larger requests and answers are refused.
inline constexpr qint64 largestRequest = qint64(16) * 1024 * 1024;

/// The socket's file, in the user's private runtime folder. One per display, since a request is never meant for another
/// display's Talmo.
QString path();
/// The lock file beside it, which marks a running Talmo.
QString lockPath();

/// What a request asks for.
enum class Command {
    Insert,
    OpenSettings,
    /// Opens or closes the menu, for a key that is bound to a command.
    ToggleMenu,
    /// From the next recording on.
    UseRecogniser,
    /// The answer is a textAnswer(), and so is that of LastTrace.
    LastDictation,
    /// When the last dictation reached each stage.
    LastTrace,
    /// Restores the clipboard content that was replaced by a text that was not read.
    RestoreClipboard,
    /// Pauses the dictation key.
    Pause,
    Resume,
    /// What the dictation key can do, for another key that runs a command.
    PressKey,
    ReleaseKey,
    ToggleKey,
    /// Discards the recording, as Escape does.
    Cancel,
    /// The answer is a statusAnswer().
    Status
};

/// Nullopt if it is no request.
std::optional<Command> commandOf(const QByteArray &request);

/// Byte-order marks at the beginning of the text are left out, here and in all other lines.
QByteArray insertRequest(const QString &text);
/// Nullopt if the request has no text.
std::optional<QString> textToInsert(const QByteArray &request);

QByteArray recogniserRequest(const QString &choice);
/// Nullopt if the request names none.
std::optional<QString> recogniserToUse(const QByteArray &request);

QByteArray lastDictationRequest(bool isRaw);
/// Whether the raw transcript is requested.
bool isRawRequested(const QByteArray &request);

QByteArray pauseRequest(bool isPaused);

/// The commands for the dictation key.
enum class KeyCommand { Press, Release, Toggle, Cancel };
QByteArray keyRequest(KeyCommand command);

/// For any command that needs nothing else.
QByteArray plainRequest(Command command);

/// What Talmo is doing.
struct Status {
    /// "idle", "recording", "processing", "inserting" or "error".
    QString state;
    /// What went wrong, for users; empty unless the state is "error".
    QString message;
    bool operator==(const Status &) const = default;
};

/// Whether the program at the other end of a connected socket runs as this user, according to the kernel.
bool isOwnUser(const QLocalSocket &socket);

/// Sends a request to the Talmo on this display, or to whoever listens on the given socket, and waits for the complete
/// answer; timeouts in milliseconds. Nullopt if nothing listens there, or another user's process does. Empty if no
/// answer arrives in time.
std::optional<QByteArray> exchange(const QByteArray &request, int connectTimeout, int answerTimeout,
                                   const QString &socketPath = path());

QByteArray answer(const std::optional<QString> &error);
QByteArray textAnswer(const QString &text);
/// The text in an answer that checkAnswer() accepts.
QString answeredText(const QByteArray &answer);
QByteArray statusAnswer(const Status &status);
Status answeredStatus(const QByteArray &answer);
/// Throws Error with the server's message, or if the reply is malformed.
void checkAnswer(const QByteArray &answer);

} // namespace ControlSocket

} // namespace talmo
