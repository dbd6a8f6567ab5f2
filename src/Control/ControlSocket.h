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

/// The socket's file, in the user's private runtime folder. One per display, since no request is meant
/// for another one.
QString path();
/// The lock file beside it, which marks a running Talmo.
QString lockPath();

/// Byte-order marks at the beginning of the text are left out, here and in all other lines.
QByteArray insertRequest(const QString &text);
/// Nullopt if it is not a request of that kind.
std::optional<QString> textToInsert(const QByteArray &request);

/// Opens the settings window.
QByteArray settingsRequest();
bool asksForSettings(const QByteArray &request);

/// Opens or closes the menu, for a key that is bound to a command.
QByteArray menuRequest();
bool asksForMenu(const QByteArray &request);

/// Changes the recogniser from the next recording on.
QByteArray recogniserRequest(const QString &choice);
/// Nullopt if it is not a request of that kind.
std::optional<QString> recogniserToUse(const QByteArray &request);

/// Requests the last dictation; the answer is a textAnswer().
QByteArray lastDictationRequest(bool isRaw);
/// Whether the raw transcript is requested; nullopt if it is not a request of that kind.
std::optional<bool> asksForLastDictation(const QByteArray &request);

/// Requests when the last dictation reached each stage; the answer is a textAnswer().
QByteArray traceRequest();
bool asksForTrace(const QByteArray &request);

/// Restores the clipboard content that was replaced by a text that was not read.
QByteArray earlierClipboardRequest();
bool asksForEarlierClipboard(const QByteArray &request);

/// Pauses the dictation key or resumes it.
QByteArray pauseRequest(bool isPaused);
/// Nullopt if it is not a request of that kind.
std::optional<bool> pauseToSet(const QByteArray &request);

/// What the dictation key can do, for another key that runs a command. Cancel discards a recording, as Escape does.
enum class KeyCommand { Press, Release, Toggle, Cancel };
QByteArray keyRequest(KeyCommand command);
/// Nullopt if it is not a request of that kind.
std::optional<KeyCommand> keyToMove(const QByteArray &request);

/// What Talmo is doing.
struct Status {
    /// "idle", "recording", "processing", "inserting" or "error".
    QString state;
    /// What went wrong, for users; empty unless the state is "error".
    QString message;
    bool operator==(const Status &) const = default;
};
/// The answer is a statusAnswer().
QByteArray statusRequest();
bool asksForStatus(const QByteArray &request);

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
