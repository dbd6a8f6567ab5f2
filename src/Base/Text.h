#pragma once

#include <QString>
#include <QStringView>

namespace talmo::Text {

/// Horizontal white space: general category Zs, and tab. No line breaks.
bool isSpace(char32_t character);

/// The above, and the line breaks U+000A to U+000D, U+0085, U+2028 and U+2029.
bool isWhitespaceOrNewline(char32_t character);

/// Trim both ends: of isSpace() or of isWhitespaceOrNewline() characters.
QString trimSpaces(const QString &text);
QString trimWhitespaceAndNewlines(const QString &text);

/// The number of characters as a reader counts them (grapheme clusters).
qsizetype characterCount(const QString &text);

/// The length of the first character in UTF-16 units; 0 for an empty text.
qsizetype firstCharacterLength(const QString &text);

/// Full Unicode upper-casing, which may lengthen the text: "ß" becomes "SS".
QString uppercased(const QString &text);

/// Canonical equivalence: composed and decomposed forms of the same characters are equal.
bool equal(const QString &left, const QString &right);

} // namespace talmo::Text
