#pragma once

#include <QString>
#include <QStringList>

namespace talmo::accuracy {

/// Words as they are compared: in lower case, without punctuation.
QStringList comparableWords(const QString &text);

/// How many words were put in, left out or exchanged.
int wordErrors(const QStringList &expected, const QStringList &heard);

/// How often these words stand in this text one after the other.
int occurrences(const QStringList &text, const QStringList &words);

} // namespace talmo::accuracy
