#pragma once

#include <QString>

namespace talmo {

/// The identifier under which the desktop and the log know Talmo.
inline QString bundleIdentifier()
{
    return QStringLiteral("io.github.talmo.Talmo");
}

} // namespace talmo
