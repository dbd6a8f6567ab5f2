#include "Settings/TalmoSettings.h"

#include "Base/Text.h"

#include <algorithm>

namespace talmo {

void TalmoSettings::addDictionaryWord(const QString &word)
{
    const QString trimmed = Text::trimWhitespaceAndNewlines(word);
    const auto isSame = [&trimmed](const QString &known) { return Text::equal(known, trimmed); };
    if (trimmed.isEmpty() || std::any_of(m_dictionaryWords.cbegin(), m_dictionaryWords.cend(), isSame)) {
        return;
    }
    setDictionaryWords(m_dictionaryWords + QStringList{trimmed});
}

} // namespace talmo
