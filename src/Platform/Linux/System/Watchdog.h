#pragma once

namespace talmo {

/// Has the kernel kill the process after this many seconds, whatever it is doing then. A later call replaces an earlier
/// one.
void killProcessAfter(unsigned seconds);

} // namespace talmo
