#include "accuracy/SpokenNumbers.h"

#include <QStringList>

#include <utility>

namespace talmo::accuracy {

namespace {

QString cardinal(qint64 number)
{
    static const QStringList small =
        QStringLiteral("zero one two three four five six seven eight nine ten eleven twelve thirteen fourteen fifteen "
                       "sixteen seventeen eighteen nineteen")
            .split(QLatin1Char(' '));
    static const QStringList tens =
        QStringLiteral("twenty thirty forty fifty sixty seventy eighty ninety").split(QLatin1Char(' '));
    constexpr std::pair<qint64, const char *> units[] = {
        {1'000'000'000, " billion"}, {1'000'000, " million"}, {1000, " thousand"}, {100, " hundred"}};
    if (number < small.size()) {
        return small.at(number);
    }
    for (const auto &[unit, name] : units) {
        if (number >= unit) {
            const QString head = cardinal(number / unit) + QLatin1String(name);
            return number % unit == 0 ? head : head + QLatin1Char(' ') + cardinal(number % unit);
        }
    }
    const QString head = tens.at(number / 10 - 2);
    return number % 10 == 0 ? head : head + QLatin1Char(' ') + cardinal(number % 10);
}

QString yearInWords(qint64 year)
{
    constexpr qint64 century = 100;
    const qint64 rest = year % century;
    return cardinal(year / century) + (rest == 0   ? QStringLiteral(" hundred")
                                       : rest < 10 ? QStringLiteral(" o ") + cardinal(rest)
                                                   : QLatin1Char(' ') + cardinal(rest));
}

bool isYear(qint64 number)
{
    return number >= 1100 && number < 2000;
}

QString digitByDigit(const QString &digits)
{
    QStringList words;
    for (const QChar digit : digits) {
        words.append(cardinal(digit.digitValue()));
    }
    return words.join(QLatin1Char(' '));
}

} // namespace

QString spokenNumber(QString digits)
{
    const bool isGrouped = digits.contains(QLatin1Char(','));
    digits.remove(QLatin1Char(','));
    if (const auto point = digits.indexOf(QLatin1Char('.')); point >= 0) {
        return cardinal(digits.left(point).toLongLong()) + QStringLiteral(" point ") +
               digitByDigit(digits.mid(point + 1));
    }
    constexpr qsizetype longest = 12;
    if (digits.size() > longest || (digits.size() > 1 && digits.startsWith(QLatin1Char('0')))) {
        return digitByDigit(digits);
    }
    const qint64 number = digits.toLongLong();
    return isYear(number) && !isGrouped ? yearInWords(number) : cardinal(number);
}

QString spokenOrdinal(qint64 number)
{
    constexpr std::pair<const char *, const char *> irregular[] = {
        {"one", "first"},    {"two", "second"}, {"three", "third"},   {"five", "fifth"},
        {"eight", "eighth"}, {"nine", "ninth"}, {"twelve", "twelfth"}};
    QStringList words = cardinal(number).split(QLatin1Char(' '));
    QString &last = words.last();
    for (const auto &[one, ordinal] : irregular) {
        if (last == QLatin1String(one)) {
            last = QLatin1String(ordinal);
            return words.join(QLatin1Char(' '));
        }
    }
    last = last.endsWith(QLatin1Char('y')) ? last.chopped(1) + QStringLiteral("ieth") : last + QStringLiteral("th");
    return words.join(QLatin1Char(' '));
}

QString spokenDecade(int year)
{
    const QString words = isYear(year) ? yearInWords(year) : cardinal(year);
    return words.endsWith(QLatin1Char('y')) ? words.chopped(1) + QStringLiteral("ies") : words + QLatin1Char('s');
}

QString spokenTime(int hour, int minute)
{
    if (minute == 0) {
        return cardinal(hour) + QStringLiteral(" o clock");
    }
    return cardinal(hour) + (minute < 10 ? QStringLiteral(" o ") : QStringLiteral(" ")) + cardinal(minute);
}

} // namespace talmo::accuracy
