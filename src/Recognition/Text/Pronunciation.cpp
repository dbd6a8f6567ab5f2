#include "Recognition/Text/Pronunciation.h"

#include <QFile>
#include <QRegularExpression>

#include <mutex>
#include <utility>

extern "C" {
#include <flite/cst_lexicon.h>
#include <flite/cst_val.h>
cst_lexicon *cmu_lex_init(void); // NOLINT(readability-identifier-naming)
}

namespace talmo {

namespace {

/// The letter-to-sound library uses the engine's phones except for these.
QByteArray recogniserPhone(QByteArray phone)
{
    while (!phone.isEmpty() && phone.back() >= '0' && phone.back() <= '9') {
        phone.chop(1); // The stress mark.
    }
    static const QHash<QByteArray, QByteArray> others{{"ax", "AH"},   {"axr", "ER"},  {"dx", "T"},  {"el", "AH L"},
                                                      {"em", "AH M"}, {"en", "AH N"}, {"ix", "IH"}, {"nx", "N"},
                                                      {"ux", "UW"},   {"hv", "HH"},   {"pau", ""}};
    return others.value(phone, phone.toUpper());
}

QByteArray byLetters(const QString &word)
{
    static std::mutex mutex; // The library keeps its state in global variables.
    const std::lock_guard lock(mutex);
    static const cst_lexicon *lexicon = cmu_lex_init();
    const QByteArray spelling = word.toLatin1();
    cst_val *phones = lex_lookup(lexicon, spelling.constData(), nullptr, nullptr);
    QByteArrayList result;
    for (const cst_val *each = phones; each != nullptr; each = val_cdr(each)) {
        const QByteArray phone = recogniserPhone(val_string(val_car(each)));
        if (!phone.isEmpty()) {
            result.append(phone);
        }
    }
    delete_val(phones);
    return result.join(' ');
}

/// The library knows English letters only.
QString withoutAccents(const QString &word)
{
    QString plain;
    for (const QChar character : word.normalized(QString::NormalizationForm_D)) {
        if (character.unicode() < 0x80 && character.isLetterOrNumber()) {
            plain.append(character);
        } else if (character == QChar(0x142) || character == QChar(0x141)) {
            plain.append(QLatin1Char('l')); // “ł” has no decomposition.
        }
    }
    return plain;
}

} // namespace

QStringList spokenParts(const QString &spelling)
{
    static const QRegularExpression part(
        QStringLiteral("\\p{Lu}+(?!\\p{Ll})|\\p{Lu}?\\p{Ll}[\\p{Ll}\\p{M}']*|\\p{Lo}+|\\p{N}+"));
    QStringList parts;
    for (auto found = part.globalMatch(spelling.normalized(QString::NormalizationForm_C)); found.hasNext();) {
        parts.append(found.next().captured());
    }
    return parts;
}

Pronunciation::Pronunciation(Lookup lookup, SoundsLike soundsLike)
    : m_lookup(std::move(lookup)),
      m_soundsLike(std::move(soundsLike))
{
}

QByteArray Pronunciation::of(const QString &spelling) const
{
    QByteArray whole = m_lookup(spelling.toLower());
    const QString substitute = m_soundsLike.value(spelling.toLower());
    if (!whole.isEmpty() && substitute.isEmpty()) {
        return whole;
    }
    QByteArrayList phones;
    for (const auto &part : spokenParts(substitute.isEmpty() ? spelling : substitute)) {
        const QByteArray said = ofPart(part);
        if (!said.isEmpty()) {
            phones.append(said);
        }
    }
    return phones.join(' ');
}

QByteArray Pronunciation::ofPart(const QString &part) const
{
    QByteArray known = m_lookup(part.toLower());
    if (!known.isEmpty()) {
        return known;
    }
    const QString plain = withoutAccents(part);
    // "NGO" and "SQL" are spelled out letter by letter.
    static const QRegularExpression vowel(QStringLiteral("[AEIOUY]"));
    const bool isSpelledOut = plain.size() > 1 && plain == plain.toUpper() && !plain.contains(vowel);
    if (!isSpelledOut) {
        return plain.isEmpty() ? QByteArray() : byLetters(plain.toLower());
    }
    QByteArrayList phones;
    for (const QChar letter : plain) {
        phones.append(byLetters(QString(letter.toLower())));
    }
    return phones.join(' ');
}

Pronunciation::SoundsLike Pronunciation::readSoundsLike(const QString &path)
{
    SoundsLike result;
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        return result;
    }
    for (const auto &line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        const QString spelling = line.section(QLatin1Char('='), 0, 0).trimmed();
        const QString sound = line.section(QLatin1Char('='), 1).trimmed();
        if (!spelling.isEmpty() && !sound.isEmpty() && !spelling.startsWith(QLatin1Char('#'))) {
            result.insert(spelling.toLower(), sound);
        }
    }
    return result;
}

} // namespace talmo
