#include "accuracy/Scoring.h"

#include <QRegularExpression>

#include <algorithm>
#include <numeric>
#include <vector>

namespace talmo::accuracy {

QStringList comparableWords(const QString &text)
{
    static const QRegularExpression noWord(QStringLiteral("[^\\p{L}\\p{N}']+"));
    return text.toLower().split(noWord, Qt::SkipEmptyParts);
}

int wordErrors(const QStringList &expected, const QStringList &heard)
{
    const auto columns = static_cast<std::size_t>(heard.size()) + 1;
    std::vector<int> previous(columns);
    std::iota(previous.begin(), previous.end(), 0);
    std::vector<int> current(columns);
    for (qsizetype row = 0; row < expected.size(); ++row) {
        current[0] = static_cast<int>(row) + 1;
        for (std::size_t column = 1; column < columns; ++column) {
            const bool isSame = expected.at(row) == heard.at(static_cast<qsizetype>(column) - 1);
            current[column] =
                std::min({previous[column] + 1, current[column - 1] + 1, previous[column - 1] + (isSame ? 0 : 1)});
        }
        std::swap(previous, current);
    }
    return previous.back();
}

int occurrences(const QStringList &text, const QStringList &words)
{
    int count = 0;
    for (qsizetype start = 0; start + words.size() <= text.size(); ++start) {
        count += text.mid(start, words.size()) == words ? 1 : 0;
    }
    return count;
}

double percentile(std::vector<double> values, double share)
{
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

} // namespace talmo::accuracy
