#include "Settings/TextTone.h"

#include "Base/Text.h"

namespace talmo {

QString rawValue(TextTone tone)
{
    switch (tone) {
    case TextTone::Standard:
        break;
    case TextTone::Professional:
        return QStringLiteral("professional");
    case TextTone::Friendly:
        return QStringLiteral("friendly");
    case TextTone::Polite:
        return QStringLiteral("polite");
    }
    return QStringLiteral("standard");
}

std::optional<TextTone> textToneFromRawValue(const QString &value)
{
    for (const TextTone tone : allTextTones) {
        if (rawValue(tone) == value) {
            return tone;
        }
    }
    return std::nullopt;
}

QString displayName(TextTone tone)
{
    const QString name = rawValue(tone);
    return Text::uppercased(name.left(1)) + name.mid(1);
}

} // namespace talmo
