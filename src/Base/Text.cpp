#include "Base/Text.h"

#include <QChar>
#include <QTextBoundaryFinder>

namespace talmo::Text {

namespace {

/// All characters of both classes are in the Basic Multilingual Plane, so testing single UTF-16 units is exact.
template <typename Predicate>
QString trimmed(const QString &text, Predicate drop)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && drop(text.at(begin).unicode())) {
        ++begin;
    }
    while (end > begin && drop(text.at(end - 1).unicode())) {
        --end;
    }
    return text.mid(begin, end - begin);
}

} // namespace

bool isSpace(char32_t character)
{
    return character == U'\t' || QChar::category(character) == QChar::Separator_Space;
}

bool isWhitespaceOrNewline(char32_t character)
{
    return isSpace(character) || (character >= 0x0A && character <= 0x0D) || character == 0x85 || character == 0x2028 ||
           character == 0x2029;
}

QString trimSpaces(const QString &text)
{
    return trimmed(text, isSpace);
}

QString trimWhitespaceAndNewlines(const QString &text)
{
    return trimmed(text, isWhitespaceOrNewline);
}

qsizetype characterCount(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() > 0) {
        ++count;
    }
    return count;
}

qsizetype firstCharacterLength(const QString &text)
{
    // Between two characters of ASCII there is always a boundary, except within a line break.
    const auto isPlain = [&text](qsizetype index) { return text.at(index) < QChar(0x80) && text.at(index) != u'\r'; };
    if (!text.isEmpty() && isPlain(0) && (text.size() == 1 || isPlain(1))) {
        return 1;
    }
    // No real character is this long; examining only the head keeps very long texts cheap.
    static constexpr qsizetype longestCharacter = 256;
    const QString head = text.left(longestCharacter);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, head);
    const auto boundary = finder.toNextBoundary();
    return boundary > 0 ? boundary : head.size();
}

QString uppercased(const QString &text)
{
    return text.toUpper();
}

bool equal(const QString &left, const QString &right)
{
    return left == right ||
           left.normalized(QString::NormalizationForm_C) == right.normalized(QString::NormalizationForm_C);
}

} // namespace talmo::Text
