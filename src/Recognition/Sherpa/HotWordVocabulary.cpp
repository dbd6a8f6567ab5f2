#include "Recognition/Sherpa/HotWordVocabulary.h"

#include "Recognition/Sherpa/SherpaTokens.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <cmath>

namespace talmo {

HotWordVocabulary::HotWordVocabulary(const SherpaModel &model)
{
    m_isUsable = model.takesHotWords();
    if (!m_isUsable || model.hotWordUnit != QStringLiteral("bpe")) {
        return;
    }
    const QDir folder(model.folder);
    m_path = folder.filePath(QStringLiteral("bpe.vocab"));
    if (!QFile::exists(m_path)) {
        guess(SherpaTokens::read(folder.filePath(model.tokens), SherpaTokens::Blank::Needed).content());
    }
}

QByteArray HotWordVocabulary::listOf(const QStringList &words)
{
    // The library separates words by "/", and takes what follows ":", "#" and "@" for numbers and names.
    static const QRegularExpression marks(QStringLiteral("[/:#@\\s]+"));
    QStringList list;
    for (const auto &word : words) {
        const QString plain = QString(word).replace(marks, QStringLiteral(" ")).trimmed();
        if (plain.size() > 1) { // The remainder of "C#" would favour every “c”.
            list.append(plain);
        }
    }
    return list.join(QLatin1Char('/')).toUtf8();
}

/// By Zipf's law, the n-th most frequent word has a probability of about 1/n.
void HotWordVocabulary::guess(const QByteArray &tokens)
{
    m_guessed = std::make_unique<QTemporaryFile>();
    m_isUsable = m_guessed->open();
    int rank = 1;
    for (const auto &line : tokens.split('\n')) {
        const QByteArray token = SherpaTokens::tokenOf(line);
        if (SherpaTokens::isPiece(token)) {
            m_guessed->write(token + '\t' + QByteArray::number(-std::log(++rank), 'f', 4) + '\n');
        }
    }
    m_isUsable = m_isUsable && m_guessed->flush() && m_guessed->error() == QFile::NoError;
    m_path = m_guessed->fileName();
}

} // namespace talmo
