#include "Recognition/Text/OrdinaryWords.h"

#include "Base/Log.h"

#include <QByteArray>
#include <QFile>
#include <QSet>

#include <algorithm>

namespace talmo {

namespace {

/// The small list: a large one has names and rare words such as "mo", which a model writes for words it does not know.
constexpr char listPath[] = "/usr/share/dict/american-english-small";

QSet<QByteArray> readList()
{
    QSet<QByteArray> words;
    QFile list(QString::fromLatin1(listPath));
    if (!list.open(QFile::ReadOnly)) {
        generalLog().info("there is no %@: misheard words of the user's own are not corrected", {list.fileName()});
    }
    for (const auto &line : list.readAll().split('\n')) {
        const QString word = QString::fromUtf8(line);
        const bool isAbbreviation = word.size() > 1 && word == word.toUpper();
        if (!word.isEmpty() && !isAbbreviation) {
            words.insert(word.toLower().toUtf8());
        }
    }
    return words;
}

} // namespace

bool isOrdinaryWord(const QString &word)
{
    static const QSet<QByteArray> words = readList();
    const bool hasDigits = std::any_of(word.begin(), word.end(), [](QChar character) { return character.isDigit(); });
    return words.isEmpty() || hasDigits || words.contains(word.toUtf8());
}

} // namespace talmo
