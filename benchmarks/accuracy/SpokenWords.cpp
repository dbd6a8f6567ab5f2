#include "accuracy/SpokenWords.h"

#include "accuracy/SpokenNumbers.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <functional>
#include <limits>
#include <vector>

namespace talmo::accuracy {

namespace {

using Match = QRegularExpressionMatch;

void replaceEach(QString &text, const QString &pattern, const std::function<QString(const Match &)> &replacement)
{
    const QRegularExpression expression(pattern);
    QString result;
    qsizetype from = 0;
    for (auto matches = expression.globalMatch(text); matches.hasNext();) {
        const Match match = matches.next();
        result += QStringView(text).mid(from, match.capturedStart() - from);
        result += replacement(match);
        from = match.capturedEnd();
    }
    text = result + text.mid(from);
}

QString currency(const QString &symbol)
{
    return symbol == QLatin1String("$")   ? QStringLiteral(" dollars")
           : symbol == QLatin1String("£") ? QStringLiteral(" pounds")
                                          : QStringLiteral(" euros");
}

void writeNumbersOut(QString &text)
{
    replaceEach(text, QStringLiteral("([$£€])(\\d[\\d,.]*)"),
                [](const Match &match) { return match.captured(2) + currency(match.captured(1)); });
    text.replace(QLatin1Char('%'), QLatin1String(" percent "));
    text.replace(QLatin1String("per cent"), QLatin1String("percent"));
    text.replace(QLatin1Char('&'), QLatin1String(" and "));
    replaceEach(text, QStringLiteral("\\b(\\d{1,2}):(\\d\\d)\\b"),
                [](const Match &match) { return spokenTime(match.captured(1).toInt(), match.captured(2).toInt()); });
    replaceEach(text, QStringLiteral("\\b([ap])\\.\\s?m\\.?"),
                [](const Match &match) { return match.captured(1) + QStringLiteral(" m"); });
    replaceEach(text, QStringLiteral("\\b(\\d{1,9})(?:st|nd|rd|th)\\b"),
                [](const Match &match) { return spokenOrdinal(match.captured(1).toLongLong()); });
    replaceEach(text, QStringLiteral("\\b(\\d{1,3}0)s\\b"),
                [](const Match &match) { return spokenDecade(match.captured(1).toInt()); });
    replaceEach(text, QStringLiteral("\\d+(?:,\\d{3})*(?:\\.\\d+)?"), [](const Match &match) {
        return QLatin1Char(' ') + spokenNumber(match.captured()) + QLatin1Char(' ');
    });
}

/// Pairs of a way of writing and the words that stand for it.
QHash<QString, QStringList> otherSpellings()
{
    constexpr const char *pairs =
        "mr=mister mrs=missus missis=missus ms=miz dr=doctor st=saint prof=professor capt=captain col=colonel "
        "gen=general jr=junior sr=senior vs=versus etc=et_cetera okay=ok alright=all_right yknow=you_know "
        "cannot=can_not til=till oh=o grey=gray colour=color colours=colors coloured=colored honour=honor "
        "honours=honors honourable=honorable favour=favor favoured=favored favourite=favorite neighbour=neighbor "
        "neighbours=neighbors neighbourhood=neighborhood labour=labor humour=humor harbour=harbor parlour=parlor "
        "rumour=rumor vapour=vapor vigour=vigor endeavour=endeavor behaviour=behavior saviour=savior "
        "splendour=splendor centre=center centred=centered theatre=theater metre=meter metres=meters "
        "defence=defense offence=offense practise=practice travelling=traveling travelled=traveled "
        "traveller=traveler counselled=counseled marvellous=marvelous jewellery=jewelry realise=realize "
        "realised=realized recognise=recognize recognised=recognized organisation=organization "
        "civilisation=civilization apologise=apologize criticised=criticized towards=toward "
        "afterwards=afterward programme=program plough=plow storey=story cheque=check whisky=whiskey mamma=mama "
        "connexion=connection moustache=mustache waggon=wagon judgement=judgment "
        "acknowledgement=acknowledgment uh= um= er= erm= hm= hmm= mm= mhm=";
    QHash<QString, QStringList> all;
    for (const auto &pair : QString::fromLatin1(pairs).split(QLatin1Char(' '))) {
        all.insert(pair.section(QLatin1Char('='), 0, 0),
                   pair.section(QLatin1Char('='), 1).split(QLatin1Char('_'), Qt::SkipEmptyParts));
    }
    return all;
}

bool isSameWhenJoined(const QStringList &one, qsizetype oneBegin, qsizetype oneCount, const QStringList &other,
                      qsizetype otherBegin, qsizetype otherCount)
{
    return oneBegin + oneCount <= one.size() && otherBegin + otherCount <= other.size() &&
           one.mid(oneBegin, oneCount).join(QString()) == other.mid(otherBegin, otherCount).join(QString());
}

} // namespace

QStringList spokenWords(const QString &text)
{
    static const QRegularExpression marked(QStringLiteral("<[^>]*>|\\[[^\\]]*\\]|\\{[^}]*\\}"));
    static const QRegularExpression accent(QStringLiteral("\\p{M}"));
    static const QRegularExpression noLetter(QStringLiteral("[^a-z0-9]+"));
    static const auto spellings = otherSpellings();
    QString plain = text.normalized(QString::NormalizationForm_KC).toLower();
    plain.replace(marked, QStringLiteral(" "));
    writeNumbersOut(plain);
    plain = plain.normalized(QString::NormalizationForm_D).remove(accent);
    plain.remove(QLatin1Char('\'')).remove(QChar(0x2019)).remove(QChar(0x2018));
    QStringList words;
    for (const auto &word : plain.split(noLetter, Qt::SkipEmptyParts)) {
        const auto other = spellings.find(word);
        words += other != spellings.end() ? *other : QStringList{word};
    }
    return words;
}

int spokenWordErrors(const QStringList &said, const QStringList &heard)
{
    constexpr int many = std::numeric_limits<int>::max() / 2;
    constexpr std::pair<int, int> joints[] = {{1, 2}, {2, 1}, {1, 3}, {3, 1}};
    const auto columns = static_cast<std::size_t>(heard.size()) + 1;
    std::vector<int> errors((static_cast<std::size_t>(said.size()) + 1) * columns, many);
    const auto at = [&](qsizetype row, qsizetype column) -> int & {
        return errors[static_cast<std::size_t>(row) * columns + static_cast<std::size_t>(column)];
    };
    at(0, 0) = 0;
    const auto reach = [&](qsizetype row, qsizetype column, int count) {
        at(row, column) = std::min(at(row, column), count);
    };
    for (qsizetype row = 0; row <= said.size(); ++row) {
        for (qsizetype column = 0; column <= heard.size(); ++column) {
            const int here = at(row, column);
            if (row < said.size() && column < heard.size()) {
                reach(row + 1, column + 1, here + (said.at(row) == heard.at(column) ? 0 : 1));
            }
            if (row < said.size()) {
                reach(row + 1, column, here + 1);
            }
            if (column < heard.size()) {
                reach(row, column + 1, here + 1);
            }
            for (const auto &[rows, count] : joints) {
                if (isSameWhenJoined(said, row, rows, heard, column, count)) {
                    reach(row + rows, column + count, here);
                }
            }
        }
    }
    return at(said.size(), heard.size());
}

} // namespace talmo::accuracy
