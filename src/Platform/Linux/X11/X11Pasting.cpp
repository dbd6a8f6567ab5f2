#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XInputTrust.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"
#include "Platform/Linux/X11/Windows/AtSpiFocusedField.h"
#include "Platform/Linux/X11/XSession.h"
#include "Platform/Pasting.h"

namespace talmo {

Pasting openPasting()
{
    const auto session = XSession::open();
    const auto pasteboard = std::make_shared<XcbPasteboard>(session);
    return {pasteboard,
            pasteboard,
            std::make_shared<XTestKeyEventPoster>(session, pasteboard->transaction()),
            std::make_shared<XInputTrust>(session, nullptr),
            std::make_shared<AtSpiFocusedField>(session),
            [pasteboard] { return pasteboard->shutDown(); },
            [pasteboard] { return pasteboard->ownershipLost(); }};
}

} // namespace talmo
