#include "Recognition/Models/ModelSize.h"

#include <algorithm>

namespace talmo {

qint64 wholeMegabytes(qint64 bytes)
{
    constexpr qint64 megabyte = 1000000;
    return (bytes + megabyte / 2) / megabyte;
}

QString readableSize(qint64 bytes)
{
    return QStringLiteral("%1 MB").arg(std::max(wholeMegabytes(bytes), qint64(1)));
}

QString readableSize(const ModelEntry &entry)
{
    if (entry.size) {
        return readableSize(*entry.size);
    }
    return entry.approximateMegabytes ? QStringLiteral("about %1 MB").arg(*entry.approximateMegabytes) : QString();
}

} // namespace talmo
