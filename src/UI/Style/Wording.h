#pragma once

#include <QString>

class QTranslator;

namespace talmo {

/// The door through which every text of Talmo's own passes on its way to the eye: Qt's translation catalogues, in which
/// a platform words anew what names the places and products of another one, and a translator adds languages. What the
/// user dictated never comes here. Main thread.
namespace Wording {

/// The context of all texts in the catalogues; QT_TRANSLATE_NOOP("Talmo", …) marks them in the source.
inline constexpr const char *context = "Talmo";

/// The text as people read it here; the source text itself when no catalogue knows it.
QString text(const QString &source);
QString text(const char *source);

/// The same with the name of the key to hold wherever the catalogue's text says %1.
QString textWithKey(const char *source, const QString &keyName);

/// An error's description: one that ends in a foreign system's words keeps those as they are.
QString errorText(const QString &description);

} // namespace Wording

} // namespace talmo
