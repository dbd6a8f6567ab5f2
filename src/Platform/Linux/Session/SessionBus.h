#pragma once

namespace talmo {

/// Without a session bus, the D-Bus library would start one, and the main thread would miss keys while it waits for
/// that. With this user's bus address set, it finds no bus there and carries on. Before the first use of the bus, and
/// before there are threads.
void keepFromStartingABus();

} // namespace talmo
