#pragma once

namespace talmo {

/// Runs the whole program on this platform and returns its exit status.
int runTalmo(int argc, char **argv);

} // namespace talmo
