#pragma once

#include "Platform/Linux/Session/AccessibilityBus.h"

namespace talmo {

/// Whether the keyboard is in a password field of this process, as it tells assistive technologies. False when it
/// shows nothing to them, or when the deadline of the bus comes first.
bool isInPasswordField(AccessibilityBus &bus, qint64 processId);

} // namespace talmo
