// Requests over the control socket, and the replies to them.

#include "Base/Error.h"
#include "Control/ControlSocket.h"
#include "Fuzzing.h"

using namespace talmo;
using fuzz::require;

namespace {

bool isOneLine(const QByteArray &bytes)
{
    return bytes.endsWith('\n') && bytes.count('\n') == 1;
}

QString withoutMarks(QString text)
{
    while (text.startsWith(QChar::ByteOrderMark)) {
        text.remove(0, 1);
    }
    return text;
}

/// A request can be rebuilt from its parsed form.
void checkRequest(const QByteArray &request)
{
    const auto text = ControlSocket::textToInsert(request);
    const auto choice = ControlSocket::recogniserToUse(request);
    if (text && text->isValidUtf16()) {
        require(ControlSocket::textToInsert(ControlSocket::insertRequest(*text)) == withoutMarks(*text));
    }
    if (choice && choice->isValidUtf16()) {
        require(ControlSocket::recogniserToUse(ControlSocket::recogniserRequest(*choice)) == withoutMarks(*choice));
    }
}

void checkText(const QString &text)
{
    const QByteArray request = ControlSocket::insertRequest(text);
    require(isOneLine(request));
    require(ControlSocket::commandOf(request) == ControlSocket::Command::Insert);
    const auto arrived = ControlSocket::textToInsert(request);
    require(arrived.has_value() && (!text.isValidUtf16() || *arrived == withoutMarks(text)));
    const QByteArray answer = ControlSocket::answer(text);
    require(isOneLine(answer));
    bool isError = false;
    try {
        ControlSocket::checkAnswer(answer);
    } catch (const Error &error) {
        isError = true;
        require(!text.isValidUtf16() || error.localizedDescription() == withoutMarks(text));
    }
    require(isError);
}

void checkAnswer(const QByteArray &answer)
{
    try {
        ControlSocket::checkAnswer(answer);
        require(answer.trimmed().startsWith('{'));
    } catch (const Error &) { // NOLINT(bugprone-empty-catch): a malformed reply is an error.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    if (data.ConsumeBool()) {
        checkText(fuzz::textUpTo(data, data.remaining_bytes()));
    } else {
        const QByteArray line = fuzz::rest(data);
        checkRequest(line);
        checkAnswer(line);
    }
    return 0;
}
