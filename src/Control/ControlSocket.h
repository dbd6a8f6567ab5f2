#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class QLocalSocket;

namespace talmo {

/// How other programs of this user talk to the Talmo that runs on this display: a socket, one request and one answer a
/// connection, each a line of JSON.
namespace ControlSocket {

/// Larger requests and answers are refused.
inline constexpr qint64 largestRequest = qint64(16) * 1024 * 1024;

/// The socket's file, in the user's private folder for such things. One for each display, since a window of another
/// one is not what anybody means.
QString path();
/// The file beside it that says that a Talmo runs here.
QString lockPath();

QByteArray insertRequest(const QString &text);
/// None when it is no request of that kind.
std::optional<QString> textToInsert(const QByteArray &request);

/// Asks for the settings window.
QByteArray settingsRequest();
bool asksForSettings(const QByteArray &request);

/// Asks for another recogniser from the next recording on.
QByteArray recogniserRequest(const QString &choice);
/// None when it is no request of that kind.
std::optional<QString> recogniserToUse(const QByteArray &request);

/// Asks for the last dictation; the answer is a textAnswer().
QByteArray lastDictationRequest(bool isRaw);
/// Whether it is to be raw; none when it is no request of that kind.
std::optional<bool> asksForLastDictation(const QByteArray &request);

/// Asks for what a text that nobody took has displaced on the clipboard.
QByteArray earlierClipboardRequest();
bool asksForEarlierClipboard(const QByteArray &request);

/// Whether this very user runs the program at the other end of a connected socket, as the kernel vouches for it.
bool isOwnUser(const QLocalSocket &socket);

/// Sends a request to the Talmo that runs here and waits for the whole answer, as many milliseconds as it is told to;
/// none when nobody listens, or somebody else does. An answer that does not come in that time is an empty one.
std::optional<QByteArray> exchange(const QByteArray &request, int connectPatience, int answerPatience);

QByteArray answer(const std::optional<QString> &error);
QByteArray textAnswer(const QString &text);
/// The text of an answer that checkAnswer() accepts.
QString answeredText(const QByteArray &answer);
/// Throws the error that the answer tells of, as Error; also when it is no answer at all.
void checkAnswer(const QByteArray &answer);

} // namespace ControlSocket

} // namespace talmo
