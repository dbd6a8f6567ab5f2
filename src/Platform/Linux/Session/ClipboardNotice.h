#pragma once

namespace talmo {

/// Tells the user that some of the clipboard's content could not be saved. Never blocks; any thread.
void showClipboardLoss(bool wasTooLarge);

} // namespace talmo
