#include "Platform/Linux/System/ProcessMemory.h"

#include <QByteArrayList>
#include <QFile>

#include <malloc.h>
#include <unistd.h>

namespace talmo::ProcessMemory {

double usedMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    const auto fields = file.open(QFile::ReadOnly) ? file.readAll().split(' ') : QByteArrayList();
    constexpr double megabyte = 1e6;
    return fields.value(1).toDouble() * static_cast<double>(::sysconf(_SC_PAGESIZE)) / megabyte;
}

void releaseFreed()
{
    ::malloc_trim(0);
}

} // namespace talmo::ProcessMemory
