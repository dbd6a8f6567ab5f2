#pragma once

#include "Cleanup/LanguageModel.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace talmo {

/// The part of the chat-completion protocol that Talmo uses. Pure functions; malformed input throws Error.

/// One complete conversation: instructions and prompt. Deterministic: the same input yields the same answer. Asks for a
/// streamed answer; see AnswerStream.
QByteArray chatRequest(const QString &model, const QString &instructions, const QString &prompt,
                       const GenerationOptions &options);

/// The text of an answer that was not streamed; also throws if it was cut off.
QString chatAnswer(const QByteArray &body);

/// The text without the reasoning that some models emit first, and some servers pass on.
QString withoutThoughts(const QString &content);

/// The names of the models that a server lists, in its order.
QStringList modelNames(const QByteArray &body);

/// The model to use if none is configured: the first that generates text. Empty if there is none.
QString preferredModel(const QStringList &names);

} // namespace talmo
