#include "Settings/DictionaryText.h"

#include "Base/Text.h"

#include <QStringDecoder>

#include <algorithm>

namespace talmo {

namespace {

const QString separator = QStringLiteral(" = ");

/// The word that a line of a file of pronunciations is about.
QString wordOf(const QString &line)
{
    return line.contains(QLatin1Char('=')) ? line.section(QLatin1Char('='), 0, 0).trimmed() : QString();
}

} // namespace

QString dictionaryText(const QList<DictionaryEntry> &entries)
{
    QString text;
    for (const auto &entry : entries) {
        // A word that contains the separator is followed by one, so that reading finds the end of the word.
        const bool isSeparated = !entry.soundsLike.isEmpty() || entry.word.contains(separator);
        text += entry.word + (isSeparated ? separator + entry.soundsLike : QString()) + QLatin1Char('\n');
    }
    return text;
}

QList<DictionaryEntry> readDictionaryText(const QString &text)
{
    QList<DictionaryEntry> entries;
    for (const auto &line : text.split(QLatin1Char('\n'))) {
        const auto end = line.lastIndexOf(separator);
        const DictionaryEntry entry{Text::trimWhitespaceAndNewlines(end < 0 ? line : line.left(end)),
                                    end < 0 ? QString() : line.mid(end + separator.size()).trimmed()};
        if (!entry.word.isEmpty() && !line.startsWith(QLatin1String("# "))) {
            entries.append(entry);
        }
    }
    return entries;
}

std::optional<QString> decodeText(const QByteArray &bytes)
{
    const auto encoding = QStringConverter::encodingForData(bytes).value_or(QStringConverter::Utf8);
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError() || text.contains(QChar::Null)) {
        return std::nullopt;
    }
    return text;
}

QStringList withWordsOf(const QList<DictionaryEntry> &entries, QStringList words)
{
    for (const auto &entry : entries) {
        const auto isSame = [&entry](const QString &known) { return Text::equal(known, entry.word); };
        if (std::none_of(words.cbegin(), words.cend(), isSame)) {
            words.append(entry.word);
        }
    }
    return words;
}

QString withPronunciation(const QString &file, const DictionaryEntry &entry)
{
    const QString line = entry.word + separator + entry.soundsLike;
    bool isWritten = entry.soundsLike.isEmpty();
    QStringList lines;
    for (const auto &each : file.split(QLatin1Char('\n'))) {
        if (wordOf(each).compare(entry.word, Qt::CaseInsensitive) != 0) {
            lines.append(each);
        } else if (!isWritten) {
            lines.append(line);
            isWritten = true;
        }
    }
    if (!isWritten) {
        const bool endsWithLine = !lines.isEmpty() && lines.last().isEmpty();
        lines.insert(endsWithLine ? lines.size() - 1 : lines.size(), line);
    }
    const QString text = lines.join(QLatin1Char('\n'));
    return text.isEmpty() || text.endsWith(QLatin1Char('\n')) ? text : text + QLatin1Char('\n');
}

} // namespace talmo
