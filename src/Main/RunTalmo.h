#pragma once

namespace talmo {

/// The whole program on this platform; gives back the exit status.
int runTalmo(int argc, char **argv);

} // namespace talmo
