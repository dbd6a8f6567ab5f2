#include "LanguageModel/ModelServerProtocol.h"

#include "Base/Error.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace talmo {

namespace {

constexpr int seed = 0;

QJsonObject object(const QByteArray &body)
{
    const auto document = QJsonDocument::fromJson(body);
    if (!document.isObject()) {
        throw Error(QStringLiteral("The model server's response is not valid JSON."));
    }
    return document.object();
}

QJsonObject message(const char *role, const QString &content)
{
    return {{QStringLiteral("role"), QString::fromLatin1(role)}, {QStringLiteral("content"), content}};
}

} // namespace

QByteArray chatRequest(const QString &model, const QString &instructions, const QString &prompt,
                       const GenerationOptions &options)
{
    QJsonObject request{
        {QStringLiteral("model"), model},
        {QStringLiteral("messages"), QJsonArray{message("system", instructions), message("user", prompt)}},
        {QStringLiteral("temperature"), options.temperature.value_or(0.0)}, // Greedy.
        {QStringLiteral("seed"), seed},
        {QStringLiteral("stream"), true},
    };
    if (options.maximumResponseTokens) {
        request.insert(QStringLiteral("max_tokens"), static_cast<qint64>(*options.maximumResponseTokens));
    }
    return QJsonDocument(request).toJson(QJsonDocument::Compact);
}

QString chatAnswer(const QByteArray &body)
{
    const auto choice = object(body).value(QStringLiteral("choices")).toArray().at(0).toObject();
    const auto content = choice.value(QStringLiteral("message")).toObject().value(QStringLiteral("content"));
    if (!content.isString()) {
        throw Error(QStringLiteral("The model server's response contains no text."));
    }
    if (choice.value(QStringLiteral("finish_reason")) == QStringLiteral("length")) {
        throw Error(QStringLiteral("The model's answer was cut off."));
    }
    return withoutThoughts(content.toString());
}

QString withoutThoughts(const QString &content)
{
    const auto opening = QStringLiteral("<think>");
    const auto closing = QStringLiteral("</think>");
    const QString trimmed = content.trimmed();
    const auto end = trimmed.indexOf(closing);
    return trimmed.startsWith(opening) && end >= 0 ? trimmed.mid(end + closing.size()) : content;
}

QStringList modelNames(const QByteArray &body)
{
    const auto data = object(body).value(QStringLiteral("data"));
    if (!data.isArray()) {
        throw Error(QStringLiteral("its response lists no models"));
    }
    QStringList names;
    for (const auto &model : data.toArray()) {
        const QString name = model.toObject().value(QStringLiteral("id")).toString();
        if (!name.isEmpty()) {
            names.append(name);
        }
    }
    return names;
}

QString preferredModel(const QStringList &names)
{
    for (const auto &name : names) {
        // Embedding models cannot generate text.
        if (!name.contains(QStringLiteral("embed"), Qt::CaseInsensitive)) {
            return name;
        }
    }
    return {};
}

} // namespace talmo
