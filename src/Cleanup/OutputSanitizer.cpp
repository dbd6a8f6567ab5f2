#include "Cleanup/OutputSanitizer.h"

#include "Base/Text.h"

#include <algorithm>
#include <array>

namespace talmo {

namespace {

constexpr QStringView exampleArrow = u"-> ";
constexpr QStringView paragraphBreak = u"\n\n";
constexpr QStringView openingTag = u"<transcript>";
constexpr QStringView closingTag = u"</transcript>";
constexpr QStringView codeFence = u"```";
constexpr QChar backtick = u'`';
constexpr QChar quotationMark = u'"';

constexpr std::array<QStringView, 10> preambleOpenings = {u"sure,",      u"sure!",      u"sure -",     u"certainly,",
                                                          u"certainly!", u"of course,", u"of course!", u"here's",
                                                          u"here is",    u"here you go"};

QString withoutExampleArrow(const QString &text)
{
    return text.startsWith(exampleArrow) ? Text::trimWhitespaceAndNewlines(text.mid(exampleArrow.size())) : text;
}

QString withoutPreamble(const QString &text)
{
    const auto end = text.indexOf(paragraphBreak);
    if (end < 0) {
        return text;
    }
    const QString first = Text::trimWhitespaceAndNewlines(text.left(end)).toLower();
    const bool isPreamble = std::any_of(preambleOpenings.begin(), preambleOpenings.end(),
                                        [&first](QStringView opening) { return first.startsWith(opening); });
    return isPreamble ? Text::trimWhitespaceAndNewlines(text.mid(end + paragraphBreak.size())) : text;
}

/// Only as a pair: a single tag may have been dictated.
QString withoutTags(const QString &text)
{
    if (!text.startsWith(openingTag) || !text.endsWith(closingTag)) {
        return text;
    }
    return text.mid(openingTag.size(), text.size() - openingTag.size() - closingTag.size());
}

QString withoutCodeFence(const QString &text)
{
    if (!text.startsWith(codeFence)) {
        return text;
    }
    const auto isOther = [](QChar character) { return character != backtick; };
    const auto begin = std::find_if(text.cbegin(), text.cend(), isOther);
    const auto end = std::find_if(text.crbegin(), std::make_reverse_iterator(begin), isOther).base();
    return QString(begin, end - begin);
}

QString withoutQuotationMarks(const QString &text)
{
    const bool isQuoted = text.size() >= 2 && text.front() == quotationMark && text.back() == quotationMark;
    return isQuoted ? text.mid(1, text.size() - 2) : text;
}

} // namespace

QString sanitize(const QString &answer)
{
    QString text = Text::trimWhitespaceAndNewlines(answer);
    text = withoutExampleArrow(text);
    text = withoutPreamble(text);
    text = withoutTags(text);
    text = withoutCodeFence(text);
    text = withoutQuotationMarks(text);
    return Text::trimWhitespaceAndNewlines(text);
}

} // namespace talmo
