#include "Platform/Linux/Session/ClipboardNotice.h"

#include "Platform/Linux/Session/DesktopNotice.h"
#include "UI/Style/Wording.h"

namespace talmo {

void showClipboardLoss(bool wasTooLarge)
{
    const char *text = wasTooLarge
                           ? QT_TRANSLATE_NOOP("Talmo", "Part of the clipboard was lost: it held more than Talmo can "
                                                        "keep. Copy it again if you need it.")
                           : QT_TRANSLATE_NOOP("Talmo", "Part of the clipboard was lost: its application did not "
                                                        "provide it in time. Copy it again if you need it.");
    showDesktopNotice(Wording::text(text));
}

} // namespace talmo
