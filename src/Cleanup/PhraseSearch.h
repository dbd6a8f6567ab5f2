#pragma once

#include <QStringView>

#include <array>

namespace talmo {

/// Finds one phrase in many texts, ignoring case as QString does, in a tenth of the time: every transcript is searched
/// for a dozen phrases, and nearly none has one.
class PhraseSearch {
public:
    /// `phrase`: small letters and spaces of ASCII, at most 127; must outlive the search.
    explicit PhraseSearch(QStringView phrase) noexcept;

    /// The first occurrence at or after `from`, or -1.
    qsizetype indexIn(QStringView text, qsizetype from = 0) const;
    qsizetype length() const { return m_phrase.size(); }

private:
    bool matchesAt(const char16_t *text) const;

    QStringView m_phrase;
    /// How far to advance when the last character compared is this one; the last entry is for all characters that occur
    /// in no phrase.
    std::array<qint8, 129> m_steps;
};

} // namespace talmo
