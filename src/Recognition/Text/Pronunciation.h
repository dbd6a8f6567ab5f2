#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace talmo {

/// Pronounces words in the engine's phones.
class Pronunciation {
public:
    /// The phones of a plain lower-case word in the engine's dictionary; empty if the word is not listed.
    using Lookup = std::function<QByteArray(const QString &word)>;
    /// Maps a lower-case spelling to the words that it sounds like.
    using SoundsLike = QHash<QString, QString>;

    Pronunciation(Lookup lookup, SoundsLike soundsLike);

    /// The phones of a word or phrase as people spell it, such as "CloudFormation"; empty if nothing in it can be
    /// pronounced.
    QByteArray of(const QString &spelling) const;

    /// Reads lines such as "Nguyen = win"; other lines are ignored.
    static SoundsLike readSoundsLike(const QString &path);

private:
    QByteArray ofPart(const QString &part) const;

    Lookup m_lookup;
    SoundsLike m_soundsLike;
};

/// The user's custom vocabulary.
struct PersonalVocabulary {
    /// As the user spells them.
    QStringList words;
    Pronunciation::SoundsLike soundsLike;

    bool operator==(const PersonalVocabulary &) const = default;
};

/// The spoken words in a spelling: split at blanks and symbols, and between a lower-case and an upper-case letter.
QStringList spokenParts(const QString &spelling);

} // namespace talmo
