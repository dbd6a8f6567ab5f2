#pragma once

namespace talmo {

/// The kernel kills the process after this many seconds, whatever it is doing then. A later call replaces the earlier.
void killProcessAfter(unsigned seconds);

} // namespace talmo
