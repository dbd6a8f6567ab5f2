#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <stop_token>

namespace talmo {

/// How much may come out of an archive.
struct UnpackingLimits {
    std::int64_t bytes = 0;
    int files = 0;
};

/// Unpacks an archive of plain files (tar with any usual compression, or zip) into a folder that is there and empty.
/// Waits for the disk. `progress` is told how much of the archive has been read, in bytes.
///
/// Throws Error, and then there may be a part of the files, for: anything but plain files and folders (links of any
/// kind could lead outside), names that are absolute or go upwards, a name that comes twice, more than the limits, a
/// damaged archive, a full disk. Throws Cancelled when a stop is requested.
void unpackArchive(const QString &archivePath, const QString &folder, const UnpackingLimits &limits,
                   const std::function<void(std::int64_t)> &progress, const std::stop_token &stop);

} // namespace talmo
