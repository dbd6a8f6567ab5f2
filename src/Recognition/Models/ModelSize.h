#pragma once

#include "Recognition/Models/ModelCatalogue.h"

#include <QString>

namespace talmo {

/// A size in megabytes of 1,000,000 bytes, rounded to whole ones.
qint64 wholeMegabytes(qint64 bytes);

/// A size as people read it everywhere: "67 MB"; "1 MB" for anything smaller.
QString readableSize(qint64 bytes);

/// The size of a download: "67 MB", or "about 67 MB" if only that is known; empty if nothing is.
QString readableSize(const ModelEntry &entry);

} // namespace talmo
