#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <vector>

namespace talmo {

/// The words before a spoken command, and the line breaks that the command stands for (empty for the last segment).
struct TextSegment {
    QString text;
    QString separator;
    bool operator==(const TextSegment &) const = default;
};

struct BulletRequest {
    /// Without the phrase that requested bullets.
    QString text;
    bool isBulletList = false;
    bool operator==(const BulletRequest &) const = default;
};

/// The phrases that request a list, in search order.
inline constexpr std::array<QStringView, 10> bulletTriggerPhrases = {
    u"as a bulleted list", u"as bullet points", u"as a bullet list", u"in bullet points",      u"as bullets",
    u"in a list",          u"as a list",        u"make this a list", u"format this as a list", u"bullet point this"};

/// Splits at "new line" and "new paragraph" anywhere in the text; empty segments are dropped with their separators.
std::vector<TextSegment> splitIntoSegments(const QString &transcript);

/// Removes the first of bulletTriggerPhrases that the text contains.
BulletRequest detectBulletRequest(const QString &text);

/// Capitalises the first character and adds a full stop if there is no terminator; nothing else.
QString formatLocally(const QString &text);

/// The cleaned texts in order, each but the last followed by its segment's separator.
QString joinSegments(const std::vector<QString> &cleanedTexts, const std::vector<TextSegment> &segments);

} // namespace talmo
