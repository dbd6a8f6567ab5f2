#include "Cleanup/LocalFormatting.h"

#include "Base/Text.h"
#include "Cleanup/PhraseSearch.h"

#include <algorithm>
#include <optional>

namespace talmo {

namespace {

const PhraseSearch newLineCommand(u"new line");
const PhraseSearch newParagraphCommand(u"new paragraph");
constexpr QStringView sentenceTerminators = u".!?";

struct Command {
    qsizetype begin;
    qsizetype length;
    QString replacement;
};

/// Finds a phrase from an advancing start, and searches again only once the start has passed the last match. Otherwise
/// a long text with many commands of one kind and none of the other would be searched to its end for each of them.
class PhraseFinder {
public:
    PhraseFinder(QStringView text, const PhraseSearch &phrase)
        : m_text(text),
          m_phrase(phrase)
    {
    }

    /// The first occurrence at or after `start`, or -1. `start` must never decrease.
    qsizetype next(qsizetype start)
    {
        if (m_found != notFound && m_found < start) {
            m_found = m_phrase.indexIn(m_text, start);
        }
        return m_found;
    }

private:
    static constexpr qsizetype notFound = -1;
    static constexpr qsizetype notSearched = -2;

    QStringView m_text;
    const PhraseSearch &m_phrase;
    qsizetype m_found = notSearched;
};

std::optional<Command> nextCommand(PhraseFinder &newParagraph, PhraseFinder &newLine, qsizetype start)
{
    const auto paragraph = newParagraph.next(start);
    const auto line = newLine.next(start);
    if (line >= 0 && (paragraph < 0 || line < paragraph)) {
        return Command{line, newLineCommand.length(), QStringLiteral("\n")};
    }
    if (paragraph >= 0) {
        return Command{paragraph, newParagraphCommand.length(), QStringLiteral("\n\n")};
    }
    return std::nullopt;
}

/// Collapses every run of U+0020 to one.
QString withoutDoubleSpaces(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar character : text) {
        if (character != QLatin1Char(' ') || !result.endsWith(QLatin1Char(' '))) {
            result += character;
        }
    }
    return result;
}

} // namespace

std::vector<TextSegment> splitIntoSegments(const QString &transcript)
{
    std::vector<TextSegment> segments;
    const auto append = [&segments](const QString &text, const QString &separator) {
        const QString trimmed = Text::trimSpaces(text);
        if (!trimmed.isEmpty()) {
            segments.push_back({trimmed, separator});
        }
    };
    PhraseFinder newParagraph(transcript, newParagraphCommand);
    PhraseFinder newLine(transcript, newLineCommand);
    qsizetype start = 0;
    while (const auto command = nextCommand(newParagraph, newLine, start)) {
        append(transcript.mid(start, command->begin - start), command->replacement);
        start = command->begin + command->length;
    }
    append(transcript.mid(start), QString());
    return segments;
}

BulletRequest detectBulletRequest(const QString &text)
{
    const QString trimmed = Text::trimWhitespaceAndNewlines(text);
    static const std::vector<PhraseSearch> searches(bulletTriggerPhrases.begin(), bulletTriggerPhrases.end());
    for (const auto &search : searches) {
        const auto position = search.indexIn(trimmed);
        if (position >= 0) {
            QString rest = trimmed;
            rest.remove(position, search.length());
            return {Text::trimWhitespaceAndNewlines(withoutDoubleSpaces(rest)), true};
        }
    }
    return {trimmed, false};
}

QString formatLocally(const QString &text)
{
    const QString trimmed = Text::trimWhitespaceAndNewlines(text);
    if (trimmed.isEmpty()) {
        return {};
    }
    const auto first = Text::firstCharacterLength(trimmed);
    QString result = Text::uppercased(trimmed.left(first)) + trimmed.mid(first);
    if (!sentenceTerminators.contains(result.back())) {
        result += QLatin1Char('.');
    }
    return result;
}

QString joinSegments(const std::vector<QString> &cleanedTexts, const std::vector<TextSegment> &segments)
{
    QString joined;
    for (std::size_t index = 0; index < cleanedTexts.size(); ++index) {
        joined += cleanedTexts[index];
        if (index + 1 < cleanedTexts.size()) {
            joined += segments[index].separator;
        }
    }
    return joined;
}

} // namespace talmo
