#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <stop_token>

namespace talmo {

/// Limits on an archive's unpacked content.
struct UnpackingLimits {
    std::int64_t bytes = 0;
    int files = 0;
};

/// Unpacks an archive of regular files (tar with any common compression, or zip) into an existing, empty folder. Blocks
/// on the disk. `progress` receives the number of archive bytes read.
///
/// Throws Error, possibly leaving some of the files, for: anything but regular files and folders (links of any kind
/// could lead outside), absolute or upward paths, duplicate names, exceeded limits, a damaged archive, a full disk.
/// Throws Cancelled if a stop is requested.
void unpackArchive(const QString &archivePath, const QString &folder, const UnpackingLimits &limits,
                   const std::function<void(std::int64_t)> &progress, const std::stop_token &stop);

} // namespace talmo
