#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace talmo::accuracy {

/// Words for comparison: in lower case, without punctuation.
QStringList comparableWords(const QString &text);

/// The number of inserted, deleted and substituted words.
int wordErrors(const QStringList &expected, const QStringList &heard);

/// The number of times these words occur consecutively in the text.
int occurrences(const QStringList &text, const QStringList &words);

/// The value below which this share of the values is; 0 if there are none.
double percentile(std::vector<double> values, double share);

} // namespace talmo::accuracy
