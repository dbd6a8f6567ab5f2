// Replies of a language-model server, and the server addresses that users type.

#include "Base/Error.h"
#include "Fuzzing.h"
#include "LanguageModel/AnswerStream.h"
#include "LanguageModel/ModelServerAddress.h"
#include "LanguageModel/ModelServerProtocol.h"

#include <QHostAddress>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

using namespace talmo;
using fuzz::require;

namespace {

void checkAnswer(const QByteArray &body)
{
    try {
        const QString text = chatAnswer(body);
        const auto content = QJsonDocument::fromJson(body)[u"choices"][0][u"message"][u"content"];
        require(content.isString());
        require(text.size() <= content.toString().size()); // Text is only removed.
    } catch (const Error &error) {
        require(!error.localizedDescription().isEmpty());
    }
}

/// A streamed answer, in two pieces and whole: where it is split makes no difference.
void checkStream(const QByteArray &body, qsizetype split)
{
    const auto answer = [](const QList<QByteArray> &pieces) {
        std::optional<QString> text;
        try {
            AnswerStream stream;
            for (const auto &piece : pieces) {
                if (stream.take(piece) == AnswerStream::Progress::Complete) {
                    break;
                }
            }
            text = stream.text();
        } catch (const Error &error) {
            require(!error.localizedDescription().isEmpty());
        }
        return text;
    };
    const auto whole = answer({body});
    require(whole == answer({body.left(split), body.mid(split)}));
    require(!whole || whole->size() <= body.size()); // Nothing is added.
}

void checkModels(const QByteArray &body)
{
    try {
        const auto names = modelNames(body);
        require(!names.contains(QString()));
        const QString preferred = preferredModel(names);
        require(preferred.isEmpty() || names.contains(preferred));
    } catch (const Error &error) {
        require(!error.localizedDescription().isEmpty());
    }
}

void checkRequest(FuzzedDataProvider &data)
{
    constexpr std::size_t longest = 200;
    const QString model = QString::fromUtf8(fuzz::bytesUpTo(data, longest));
    const QString instructions = QString::fromUtf8(fuzz::bytesUpTo(data, longest));
    const QString prompt = QString::fromUtf8(fuzz::rest(data));
    const QByteArray request = chatRequest(model, instructions, prompt, {});
    require(request == chatRequest(model, instructions, prompt, {}));
    const auto document = QJsonDocument::fromJson(request);
    require(document[u"model"].toString() == model);
    require(document[u"messages"][0][u"content"].toString() == instructions);
    require(document[u"messages"][1][u"content"].toString() == prompt);
    require(document[u"messages"].toArray().size() == 2);
}

/// Whatever the user typed, dictated text is sent only to this machine.
void checkAddress(const QString &setting)
{
    try {
        for (const QUrl &address : modelServerAddresses(setting)) {
            const QHostAddress host(address.host());
            require(!host.isNull() && host.isLoopback());
            require(address.scheme() == QStringLiteral("http"));
            require(address.userInfo().isEmpty() && !address.hasQuery() && !address.hasFragment());
            require(address.isValid());
        }
    } catch (const Error &error) {
        require(!error.localizedDescription().isEmpty());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    // The choice is taken from the end, so that unmodified bodies can serve as seeds.
    switch (data.ConsumeIntegralInRange(0, 3)) {
    case 0:
        checkRequest(data);
        break;
    case 1:
        checkAddress(fuzz::textUpTo(data, data.remaining_bytes()));
        break;
    default: {
        const auto split = data.ConsumeIntegral<std::uint8_t>();
        const QByteArray body = fuzz::rest(data);
        checkAnswer(body);
        checkStream(body, split);
        checkModels(body);
        break;
    }
    }
    return 0;
}
