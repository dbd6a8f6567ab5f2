#include "Recognition/Text/SoundDistance.h"

#include <algorithm>
#include <array>
#include <vector>

namespace talmo {

namespace {

constexpr double similar = 0.5;
constexpr double different = 1;
/// A vowel is never taken for a consonant.
constexpr double incomparable = 2;

bool isVowel(const QByteArray &phone)
{
    static constexpr std::array vowels{"AA", "AE", "AH", "AO", "AW", "AY", "EH", "ER",
                                       "EY", "IH", "IY", "OW", "OY", "UH", "UW"};
    return std::any_of(vowels.begin(), vowels.end(), [&phone](const char *vowel) { return phone == vowel; });
}

bool areSimilar(const QByteArray &left, const QByteArray &right)
{
    static constexpr std::array<std::array<const char *, 2>, 23> pairs{
        {{"AA", "AO"}, {"AA", "AH"}, {"AA", "AE"}, {"AO", "AH"}, {"AO", "OW"}, {"AH", "EH"}, {"AH", "IH"}, {"AH", "UH"},
         {"AE", "EH"}, {"EH", "IH"}, {"EH", "EY"}, {"IH", "IY"}, {"UH", "UW"}, {"T", "D"},   {"P", "B"},   {"K", "G"},
         {"F", "V"},   {"S", "Z"},   {"SH", "ZH"}, {"CH", "JH"}, {"TH", "DH"}, {"M", "N"},   {"N", "NG"}}};
    return std::any_of(pairs.begin(), pairs.end(), [&](const auto &pair) {
        return (left == pair[0] && right == pair[1]) || (left == pair[1] && right == pair[0]);
    });
}

double costOf(const QByteArray &left, const QByteArray &right)
{
    if (left == right) {
        return 0;
    }
    if (isVowel(left) != isVowel(right)) {
        return incomparable;
    }
    return areSimilar(left, right) ? similar : different;
}

} // namespace

double soundDistance(const QByteArrayList &left, const QByteArrayList &right)
{
    const auto width = static_cast<std::size_t>(right.size());
    std::vector<double> row(width + 1);
    for (std::size_t column = 1; column <= width; ++column) {
        row[column] = static_cast<double>(column) * different;
    }
    for (const auto &phone : left) {
        double diagonal = row[0];
        row[0] += different;
        for (std::size_t column = 1; column <= width; ++column) {
            const double replaced = diagonal + costOf(phone, right[static_cast<qsizetype>(column - 1)]);
            diagonal = row[column];
            row[column] = std::min({replaced, row[column] + different, row[column - 1] + different});
        }
    }
    return row[width];
}

double mostDistance(const QByteArrayList &sound)
{
    constexpr qsizetype shortWord = 4;
    constexpr qsizetype longWord = 8;
    if (sound.size() < shortWord) {
        return 0;
    }
    return sound.size() < longWord ? similar : different;
}

} // namespace talmo
