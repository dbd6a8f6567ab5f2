#include "Recognition/Sherpa/HotWordVocabulary.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>

namespace talmo {

namespace {

bool isPiece(const QByteArray &token)
{
    return !token.startsWith('<') && !token.startsWith('#');
}

/// Whether no piece has a lower-case letter.
bool areCapitals(const QByteArray &tokens)
{
    const auto lines = tokens.split('\n');
    return std::all_of(lines.begin(), lines.end(), [](const QByteArray &line) {
        const QString text = QString::fromUtf8(line);
        return !isPiece(line) || text == text.toUpper();
    });
}

} // namespace

HotWordVocabulary::HotWordVocabulary(const SherpaModel &model)
{
    const bool isOfPieces = model.hotWordUnit == QStringLiteral("bpe");
    if (model.kind != SherpaModel::Kind::Transducer ||
        (!isOfPieces && model.hotWordUnit != QStringLiteral("cjkchar"))) {
        return;
    }
    const QDir folder(model.folder);
    QFile tokens(folder.filePath(model.tokens));
    if (!tokens.open(QFile::ReadOnly)) {
        return;
    }
    const QByteArray content = tokens.readAll();
    m_hasCapitals = areCapitals(content);
    m_isUsable = true;
    if (!isOfPieces) {
        return;
    }
    m_path = folder.filePath(QStringLiteral("bpe.vocab"));
    if (!QFile::exists(m_path)) {
        guess(content);
    }
}

/// By Zipf's law, the n-th most frequent word has a probability of about 1/n.
void HotWordVocabulary::guess(const QByteArray &tokens)
{
    m_guessed = std::make_unique<QTemporaryFile>();
    m_isUsable = m_guessed->open();
    int rank = 1;
    for (const auto &line : tokens.split('\n')) {
        const QByteArray token = line.left(line.lastIndexOf(' '));
        if (!token.isEmpty() && isPiece(token)) {
            m_guessed->write(token + '\t' + QByteArray::number(-std::log(++rank), 'f', 4) + '\n');
        }
    }
    m_isUsable = m_isUsable && m_guessed->flush() && m_guessed->error() == QFile::NoError;
    m_path = m_guessed->fileName();
}

} // namespace talmo
