#pragma once

#include "Insertion/KeyEventPoster.h"

namespace talmo {

/// Whether to send the paste shortcut now: all of it is sent at the press of its key, so nothing is left at the
/// release. Any other key is logged, and not posted.
bool isPastePress(const KeyEvent &event);

} // namespace talmo
