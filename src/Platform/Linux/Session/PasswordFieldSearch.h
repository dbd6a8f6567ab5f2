#pragma once

#include "Platform/Linux/Session/AccessibilityBus.h"

namespace talmo {

/// Whether the keyboard focus is in a password field of this process, as reported to assistive technologies. False if
/// the process exposes nothing to them, or if the bus's deadline passes first.
bool isInPasswordField(AccessibilityBus &bus, qint64 processId);

} // namespace talmo
