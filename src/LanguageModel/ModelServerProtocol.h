#pragma once

#include "Cleanup/LanguageModel.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace talmo {

/// The part of the chat-completion protocol that Talmo speaks. Pure; what cannot be understood throws Error.

/// One whole conversation: instructions and prompt. Always the same answer to the same words.
QByteArray chatRequest(const QString &model, const QString &instructions, const QString &prompt,
                       const GenerationOptions &options);

/// The text of a whole answer; throws also when it was cut off.
QString chatAnswer(const QByteArray &body);

/// The names of the models that a server lists, in its order.
QStringList modelNames(const QByteArray &body);

/// The name to ask for where the user chose none: the first one that is made for writing. Empty when there is none.
QString preferredModel(const QStringList &names);

} // namespace talmo
