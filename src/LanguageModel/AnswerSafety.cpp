#include "LanguageModel/AnswerSafety.h"

#include "Base/Error.h"

#include <array>

namespace talmo {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

/// The joiners U+200C and U+200D and the marks U+200E, U+200F and U+061C are kept: Persian, Hebrew and emoji need them,
/// and they affect only the adjacent characters.
constexpr std::array stripped = {
    Range{0x0000, 0x0008}, Range{0x000E, 0x001F}, Range{0x007F, 0x0084}, Range{0x0086, 0x009F},
    Range{0x200B, 0x200B}, Range{0x202A, 0x202E}, Range{0x2060, 0x206F}, Range{0xD800, 0xDFFF},
    Range{0xFEFF, 0xFEFF}, Range{0xFFF9, 0xFFFB}, Range{0xFFFE, 0xFFFF}, Range{0xE0000, 0xE0FFF},
};

bool isStripped(char32_t character)
{
    for (const auto &range : stripped) {
        if (character >= range.first && character <= range.last) {
            return true;
        }
    }
    return false;
}

/// Vertical tab, form feed, carriage return, next line, line separator, paragraph separator.
bool isOtherLineEnd(char32_t character)
{
    return (character >= 0x000B && character <= 0x000D) || character == 0x0085 || character == 0x2028 ||
           character == 0x2029;
}

} // namespace

QString withoutControls(const QString &text)
{
    QString result;
    result.reserve(text.size());
    char32_t last = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        char32_t character = text.at(index).unicode();
        if (text.at(index).isHighSurrogate() && index + 1 < text.size() && text.at(index + 1).isLowSurrogate()) {
            character = QChar::surrogateToUcs4(text.at(index), text.at(index + 1));
            ++index;
        }
        const bool isSecondHalf = last == U'\r' && character == U'\n'; // Of a line ending that was already converted.
        if (isOtherLineEnd(character)) {
            result += QLatin1Char('\n');
        } else if (!isSecondHalf && !isStripped(character)) {
            result += QChar::fromUcs4(character);
        }
        last = character;
    }
    return result;
}

void requireProportion(const QString &answer, const QString &prompt)
{
    // A polite rewording can be several times as long as three words, but not as a page.
    constexpr qsizetype alwaysAllowed = 600;
    constexpr qsizetype largestGrowth = 3;
    if (answer.size() > alwaysAllowed + largestGrowth * prompt.size()) {
        throw Error(QStringLiteral("The model's answer is too long: %1 characters for a prompt of %2.")
                        .arg(answer.size())
                        .arg(prompt.size()));
    }
}

} // namespace talmo
