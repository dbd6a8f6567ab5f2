#pragma once

namespace talmo {

/// The memory of this process. Any thread.
namespace ProcessMemory {

/// Resident, in units of 1,000,000 bytes.
double usedMegabytes();

/// Returns freed memory to the system. Otherwise the allocator keeps 40 of the 90 MB of an unloaded model.
void releaseFreed();

} // namespace ProcessMemory

} // namespace talmo
