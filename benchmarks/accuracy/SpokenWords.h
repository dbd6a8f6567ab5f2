#pragma once

#include <QString>
#include <QStringList>

namespace talmo::accuracy {

/// The words of a text as they are spoken, whatever the way of writing: without case, punctuation, hyphens, apostrophes
/// and fillers such as “um”; numbers, amounts, times and abbreviations in words; American spelling.
QStringList spokenWords(const QString &text);

/// The number of inserted, deleted and substituted words. A word written as one or as two counts as the same.
int spokenWordErrors(const QStringList &said, const QStringList &heard);

} // namespace talmo::accuracy
