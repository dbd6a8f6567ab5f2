#pragma once

namespace talmo {

/// Where there is no session bus, the D-Bus library would start one of its own, and the main thread would wait for that
/// while keys go unseen. Told where the bus of this user would be, it finds none and goes on. Before the first use of
/// the bus, and before there are threads.
void keepFromStartingABus();

} // namespace talmo
