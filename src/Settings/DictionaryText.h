#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace talmo {

/// A word of the dictionary and its pronunciation, which is empty if it sounds as it is written.
struct DictionaryEntry {
    QString word;
    QString soundsLike;
    bool operator==(const DictionaryEntry &) const = default;
};

/// The dictionary as text, one word a line, such as "Nguyen = win", and back. Reading skips blank lines and lines that
/// begin with "# ".
QString dictionaryText(const QList<DictionaryEntry> &entries);
QList<DictionaryEntry> readDictionaryText(const QString &text);

/// The text of a file in UTF-8, or in UTF-16 if it says so; nullopt if it is neither.
std::optional<QString> decodeText(const QByteArray &bytes);

/// The words, followed by those of the entries that are not among them.
QStringList withWordsOf(const QList<DictionaryEntry> &entries, QStringList words);

/// A file of pronunciations with this one; without it if `soundsLike` is empty. All other lines stay as they are.
QString withPronunciation(const QString &file, const DictionaryEntry &entry);

} // namespace talmo
