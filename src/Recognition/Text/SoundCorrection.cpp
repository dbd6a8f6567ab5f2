#include "Recognition/Text/SoundCorrection.h"

#include "Recognition/Text/SoundDistance.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <utility>

namespace talmo {

namespace {

/// Longer names are seldom split into more.
constexpr qsizetype mostPieces = 3;

Pronunciation byLetters()
{
    return Pronunciation([](const QString &) { return QByteArray(); }, {});
}

} // namespace

SoundCorrection::SoundCorrection(const PersonalVocabulary &vocabulary, IsOrdinary isOrdinary)
    : m_isOrdinary(std::move(isOrdinary))
{
    const Pronunciation asTold([](const QString &) { return QByteArray(); }, vocabulary.soundsLike);
    for (const auto &each : vocabulary.words) {
        const QString spelled = each.simplified();
        Word word{spelled, {}};
        for (const auto &pronunciation : {asTold, byLetters()}) {
            const QByteArrayList sound = pronunciation.of(spelled).split(' ');
            if (!sound.first().isEmpty() && !word.sounds.contains(sound)) {
                word.sounds.append(sound);
            }
        }
        m_words.append(word);
        const QString told = vocabulary.soundsLike.value(spelled.toLower()).toLower().simplified();
        if (told.contains(QLatin1Char(' '))) {
            m_phrases.insert(told, spelled);
        }
    }
}

QList<SoundCorrection::Piece> SoundCorrection::piecesOf(const QString &text) const
{
    static const QRegularExpression wordForm(QStringLiteral("[\\p{L}\\p{N}][\\p{L}\\p{M}\\p{N}'’]*"));
    QList<Piece> pieces;
    qsizetype end = 0;
    for (auto found = wordForm.globalMatch(text); found.hasNext();) {
        const auto match = found.next();
        const QString word = match.captured();
        const bool isPersonal = std::any_of(m_words.begin(), m_words.end(), [&word](const Word &each) {
            return each.spelled.split(QLatin1Char(' ')).contains(word, Qt::CaseInsensitive);
        });
        const auto between = QStringView(text).mid(end, match.capturedStart() - end);
        pieces.append({word, match.capturedStart(), m_isOrdinary(word.toLower()), isPersonal,
                       !pieces.isEmpty() && between.trimmed().isEmpty()});
        end = match.capturedEnd();
    }
    return pieces;
}

QByteArrayList SoundCorrection::soundOf(const QString &word) const
{
    auto known = m_sounds.find(word);
    if (known == m_sounds.end()) {
        known = m_sounds.insert(word, byLetters().of(word).split(' '));
    }
    return *known;
}

/// The vocabulary word that sounds most like the words starting at `first`.
SoundCorrection::Match SoundCorrection::matchAt(const QList<Piece> &pieces, qsizetype first) const
{
    Match best;
    double leastDistance = std::numeric_limits<double>::max();
    QByteArrayList sound;
    QString phrase;
    bool hasUnknown = false;
    for (qsizetype count = 1; count <= mostPieces && first + count <= pieces.size(); ++count) {
        const Piece &piece = pieces[first + count - 1];
        if (piece.isPersonal || (count > 1 && !piece.continues)) {
            break;
        }
        sound += soundOf(piece.text.toLower());
        phrase += (count > 1 ? QStringLiteral(" ") : QString()) + piece.text.toLower();
        hasUnknown = hasUnknown || !piece.isKnown;
        if (m_phrases.contains(phrase)) {
            return {m_phrases.value(phrase), count};
        }
        for (const auto &word : m_words) {
            for (const auto &wanted : word.sounds) {
                const double distance = hasUnknown ? soundDistance(sound, wanted) : leastDistance;
                if (distance < leastDistance && distance <= mostDistance(wanted)) {
                    leastDistance = distance;
                    best = {word.spelled, count};
                }
            }
        }
    }
    return best;
}

QString SoundCorrection::applied(const QString &text) const
{
    const auto pieces = piecesOf(text);
    QString result;
    qsizetype copied = 0;
    for (qsizetype index = 0; index < pieces.size();) {
        const Match match = matchAt(pieces, index);
        if (match.pieces == 0) {
            ++index;
            continue;
        }
        const Piece &last = pieces[index + match.pieces - 1];
        result += text.mid(copied, pieces[index].start - copied) + match.spelled;
        copied = last.start + last.text.size();
        index += match.pieces;
    }
    return result + text.mid(copied);
}

} // namespace talmo
