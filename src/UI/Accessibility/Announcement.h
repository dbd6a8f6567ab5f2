#pragma once

#include <QString>

namespace talmo {

/// Has a screen reader speak this text, wherever the keyboard focus is. Costs nothing while none is running. Main
/// thread.
void announceToScreenReader(const QString &text);

} // namespace talmo
