#pragma once

#include "Recognition/Text/Pronunciation.h"

#include <QByteArrayList>
#include <QHash>
#include <QList>
#include <QString>

#include <functional>

namespace talmo {

/// Corrects what a model made of a word that it does not know: "tal mo" becomes "Talmo" if that is in the custom
/// vocabulary. Only words that are no ordinary ones are touched, and only if they sound almost like one of the
/// vocabulary, which is English as far as sounds go. One thread.
class SoundCorrection {
public:
    /// Whether a word in lower case is one that people use without having it in their vocabulary.
    using IsOrdinary = std::function<bool(const QString &word)>;

    SoundCorrection(const PersonalVocabulary &vocabulary, IsOrdinary isOrdinary);

    QString applied(const QString &text) const;

private:
    struct Word {
        QString spelled;
        /// How it may be spoken.
        QList<QByteArrayList> sounds;
    };
    struct Piece {
        QString text;
        qsizetype start = 0;
        bool isKnown = false;
        bool isPersonal = false;
        /// Only blanks are between it and the piece before.
        bool continues = false;
    };
    struct Match {
        QString spelled;
        qsizetype pieces = 0;
    };

    QList<Piece> piecesOf(const QString &text) const;
    Match matchAt(const QList<Piece> &pieces, qsizetype first) const;
    QByteArrayList soundOf(const QString &word) const;

    IsOrdinary m_isOrdinary;
    QList<Word> m_words;
    /// The user's pronunciations that consist of several ordinary words: "pie torch".
    QHash<QString, QString> m_phrases;
    mutable QHash<QString, QByteArrayList> m_sounds;
};

} // namespace talmo
