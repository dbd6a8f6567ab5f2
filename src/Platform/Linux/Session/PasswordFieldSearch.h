#pragma once

#include "Platform/Linux/Session/AccessibilityBus.h"

namespace talmo {

/// Whether the keyboard focus is in a password field of this process, as reported to assistive technologies. False if
/// the process exposes nothing to them, or if the bus's deadline passes first.
bool isInPasswordField(AccessibilityBus &bus, qint64 processId);

/// The same for whichever program reports that one of its windows is active, where the desktop does not say whose is.
bool isInActivePasswordField(AccessibilityBus &bus);

} // namespace talmo
