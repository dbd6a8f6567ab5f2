#pragma once

#include <QString>

namespace talmo {

/// Talmo's application ID, as the desktop and the log know it.
inline QString bundleIdentifier()
{
    return QStringLiteral("io.github.talmo.Talmo");
}

} // namespace talmo
