#include "Platform/Linux/Keys/PastePress.h"

#include "Base/Log.h"
#include "Insertion/ClipboardPasteInsertionService.h"

namespace talmo {

bool isPastePress(const KeyEvent &event)
{
    const bool isPaste = event.keyCode == ClipboardPasteInsertionService::pasteKeyCode &&
                         event.flags == ClipboardPasteInsertionService::commandFlag;
    if (!isPaste) {
        generalLog().error("a key was not posted: only the paste shortcut is supported");
    }
    return isPaste && event.isDown;
}

} // namespace talmo
