#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <vector>

namespace talmo {

/// The words spoken before a command, and the line breaks that the command stands for (none for the last segment).
struct TextSegment {
    QString text;
    QString separator;
    bool operator==(const TextSegment &) const = default;
};

struct BulletRequest {
    /// Without the phrase that asked for bullets.
    QString text;
    bool isBulletList = false;
    bool operator==(const BulletRequest &) const = default;
};

/// The phrases that ask for a list, in the order in which they are searched.
inline constexpr std::array<QStringView, 10> bulletTriggerPhrases = {
    u"as a bulleted list", u"as bullet points", u"as a bullet list", u"in bullet points",      u"as bullets",
    u"in a list",          u"as a list",        u"make this a list", u"format this as a list", u"bullet point this"};

/// Splits at "new line" and "new paragraph", wherever they stand; empty segments go with their separators.
std::vector<TextSegment> splitIntoSegments(const QString &transcript);

/// Takes the first phrase of the list that is found out of the text.
BulletRequest detectBulletRequest(const QString &text);

/// First character in upper case, a full stop at the end if there is no terminator; nothing else.
QString formatLocally(const QString &text);

/// The cleaned texts in order, each but the last followed by its segment's separator.
QString joinSegments(const std::vector<QString> &cleanedTexts, const std::vector<TextSegment> &segments);

} // namespace talmo
