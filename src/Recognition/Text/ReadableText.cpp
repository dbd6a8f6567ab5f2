#include "Recognition/Text/ReadableText.h"

#include <utility>

namespace talmo {

ReadableText::ReadableText(Letters letters, PersonalSpelling spelling,
                           std::shared_ptr<const SoundCorrection> correction)
    : m_letters(letters),
      m_spelling(std::move(spelling)),
      m_correction(std::move(correction))
{
}

QString ReadableText::of(const QString &raw) const
{
    QString text = normaliseTranscript(m_letters == Letters::Lower ? raw.toLower() : raw);
    // The words as they were spoken are right already, and no two of them are one misheard word.
    text = m_spelling.applied(text);
    return m_correction ? m_correction->applied(text) : text;
}

} // namespace talmo
