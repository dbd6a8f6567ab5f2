#pragma once

#include <QString>

class QTranslator;

namespace talmo {

/// The single lookup for user-visible strings, in Qt's translation catalogues. A platform's catalogue replaces texts
/// that name the places and products of another platform, and translators add languages. Dictated text is never looked
/// up. Main thread.
namespace Wording {

/// The context of all texts in the catalogues; mark them in the source with QT_TRANSLATE_NOOP("Talmo", …).
inline constexpr const char *context = "Talmo";

/// The translated text, or the source text if no catalogue has it.
QString text(const QString &source);
QString text(const char *source);

/// The translated text with each %1 replaced by the translated name of the key to hold.
QString textWithKey(const char *source, const QString &keyName);

/// A translated error description: as a whole, with the shortcut that was filled in (translated as well), or in the
/// parts that are known. A foreign system's message stays as it is.
QString errorText(const QString &description);

} // namespace Wording

} // namespace talmo
