#include "LanguageModel/AnswerStream.h"

#include "Base/Error.h"
#include "LanguageModel/ModelServerProtocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

constexpr char lineEnd = '\n';

QByteArray withoutLeadingBlanks(const QByteArray &bytes)
{
    const auto isBlank = [](char character) {
        return character == ' ' || character == '\t' || character == '\r' || character == '\n';
    };
    const auto first = std::find_if_not(bytes.begin(), bytes.end(), isBlank);
    return bytes.mid(first - bytes.begin());
}

/// Servers disagree about the name under which a model's reasoning is sent.
bool hasToken(const QJsonObject &delta)
{
    const auto isText = [&delta](QLatin1StringView name) { return !delta.value(name).toString().isEmpty(); };
    return isText(QLatin1StringView("content")) || isText(QLatin1StringView("reasoning_content")) ||
           isText(QLatin1StringView("reasoning"));
}

} // namespace

AnswerStream::Progress AnswerStream::take(const QByteArray &bytes)
{
    const QByteArray piece = m_kind == Kind::Unknown ? withoutLeadingBlanks(bytes) : bytes;
    if (piece.isEmpty()) {
        return Progress::None;
    }
    if (m_kind == Kind::Unknown) {
        m_kind = piece.startsWith('{') ? Kind::Object : Kind::Events;
    }
    if (m_kind == Kind::Object) {
        m_object += piece;
        return Progress::None;
    }
    return takeEvents(piece);
}

AnswerStream::Progress AnswerStream::takeEvents(const QByteArray &bytes)
{
    auto progress = Progress::None;
    qsizetype from = 0;
    for (auto end = bytes.indexOf(lineEnd); end >= 0; end = bytes.indexOf(lineEnd, from)) {
        m_line += bytes.mid(from, end - from);
        from = end + 1;
        progress = std::max(progress, takeLine(std::exchange(m_line, {})));
        if (progress == Progress::Complete) {
            return progress;
        }
    }
    m_line += bytes.mid(from);
    return progress;
}

/// Only the data matters; comments, which some servers send to keep a connection alive, are no progress.
AnswerStream::Progress AnswerStream::takeLine(QByteArray line)
{
    if (line.endsWith('\r')) {
        line.chop(1);
    }
    if (line.isEmpty()) {
        return endEvent();
    }
    if (line.startsWith("error:")) { // As llama.cpp's server reports one in mid-answer.
        throw Error(QStringLiteral("The model server reported an error."));
    }
    if (line.startsWith("data:")) {
        m_data += m_data.isEmpty() ? QByteArray() : QByteArray(1, lineEnd);
        m_data += line.mid(line.startsWith("data: ") ? 6 : 5);
    }
    return Progress::None;
}

AnswerStream::Progress AnswerStream::endEvent()
{
    const QByteArray data = std::exchange(m_data, {}).trimmed();
    if (data.isEmpty()) {
        return Progress::None;
    }
    if (data == "[DONE]") {
        m_isFinished = true;
        return Progress::Complete;
    }
    return takeDelta(data);
}

AnswerStream::Progress AnswerStream::takeDelta(const QByteArray &data)
{
    const auto document = QJsonDocument::fromJson(data);
    if (!document.isObject()) {
        throw Error(QStringLiteral("The model server's response is not valid JSON."));
    }
    const auto problem = document.object().value(QStringLiteral("error"));
    if (!problem.isUndefined() && !problem.isNull()) {
        throw Error(QStringLiteral("The model server reported an error."));
    }
    const auto choice = document.object().value(QStringLiteral("choices")).toArray().at(0).toObject();
    const auto delta = choice.value(QStringLiteral("delta")).toObject();
    m_text += delta.value(QStringLiteral("content")).toString();
    const QString reason = choice.value(QStringLiteral("finish_reason")).toString();
    m_isFinished = m_isFinished || !reason.isEmpty();
    m_isCut = m_isCut || reason == QStringLiteral("length");
    return hasToken(delta) ? Progress::Advanced : Progress::None;
}

QString AnswerStream::text()
{
    if (m_kind == Kind::Object) {
        return chatAnswer(m_object);
    }
    takeLine(std::exchange(m_line, {})); // Some servers leave out the last line end.
    endEvent();
    if (!m_isFinished) {
        throw Error(QStringLiteral("The model server's answer is incomplete."));
    }
    if (m_isCut) {
        throw Error(QStringLiteral("The model's answer was cut off."));
    }
    return withoutThoughts(m_text);
}

} // namespace talmo
