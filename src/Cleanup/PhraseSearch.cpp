#include "Cleanup/PhraseSearch.h"

namespace talmo {

namespace {

constexpr std::size_t foreign = 128;

/// The folded character, if a phrase can have it. Two characters outside ASCII fold into it: the long s and the Kelvin
/// sign.
constexpr std::size_t folded(char16_t character)
{
    constexpr char16_t longS = 0x17F;
    constexpr char16_t kelvin = 0x212A;
    if (character < foreign) {
        return character >= u'A' && character <= u'Z' ? character + std::size_t(u'a' - u'A') : character;
    }
    return character == longS ? u's' : character == kelvin ? u'k' : foreign;
}

} // namespace

PhraseSearch::PhraseSearch(QStringView phrase) noexcept
    : m_phrase(phrase)
{
    m_steps.fill(static_cast<qint8>(phrase.size()));
    for (qsizetype index = 0; index + 1 < phrase.size(); ++index) {
        m_steps[folded(phrase.utf16()[index])] = static_cast<qint8>(phrase.size() - 1 - index);
    }
}

qsizetype PhraseSearch::indexIn(QStringView text, qsizetype from) const
{
    const char16_t *units = text.utf16();
    const qsizetype last = m_phrase.size() - 1;
    while (from + last < text.size()) {
        if (matchesAt(units + from)) {
            return from;
        }
        from += m_steps[folded(units[from + last])];
    }
    return -1;
}

bool PhraseSearch::matchesAt(const char16_t *text) const
{
    for (qsizetype index = m_phrase.size() - 1; index >= 0; --index) {
        if (folded(text[index]) != m_phrase.utf16()[index]) {
            return false;
        }
    }
    return true;
}

} // namespace talmo
