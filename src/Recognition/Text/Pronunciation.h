#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace talmo {

/// How words are said, in the recogniser's phones.
class Pronunciation {
public:
    /// The phones of a plain lower-case word that the recogniser's dictionary knows; empty when it does not.
    using Lookup = std::function<QByteArray(const QString &word)>;
    /// By the spelling, without regard to case: the words that it sounds like.
    using SoundsLike = QHash<QString, QString>;

    Pronunciation(Lookup lookup, SoundsLike soundsLike);

    /// The phones of a word or phrase as people spell it, such as "CloudFormation"; empty when nothing in it can be
    /// said.
    QByteArray of(const QString &spelling) const;

    /// Reads lines such as "Nguyen = win". What is no such line is left out.
    static SoundsLike readSoundsLike(const QString &path);

private:
    QByteArray ofPart(const QString &part) const;

    Lookup m_lookup;
    SoundsLike m_soundsLike;
};

/// The user's own words.
struct PersonalVocabulary {
    /// As the user spells them.
    QStringList words;
    Pronunciation::SoundsLike soundsLike;

    bool operator==(const PersonalVocabulary &) const = default;
};

/// The words that a spelling is made of: at blanks and signs, and where a small letter meets a capital one.
QStringList spokenParts(const QString &spelling);

} // namespace talmo
