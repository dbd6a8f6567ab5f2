#include "Platform/Linux/X11/X11Pasting.h"

#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XInputTrust.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"
#include "Platform/Linux/X11/Windows/AtSpiFocusedField.h"
#include "Platform/Linux/X11/XSession.h"

namespace talmo {

Pasting openX11Pasting(bool isNested, const std::shared_ptr<ShellPaster> &shell)
{
    const auto session = XSession::open(isNested);
    const auto pasteboard = std::make_shared<XcbPasteboard>(session);
    return {pasteboard,
            pasteboard,
            std::make_shared<XTestKeyEventPoster>(session, pasteboard->transaction(), shell),
            std::make_shared<XInputTrust>(session, nullptr),
            std::make_shared<AtSpiFocusedField>(session),
            [pasteboard] { return pasteboard->shutDown(); },
            [pasteboard] { return pasteboard->ownershipLost(); },
            [pasteboard](const std::function<void()> &callback) {
                pasteboard->setOnLoss([callback](SelectionReading::Loss /*loss*/) { callback(); });
            }};
}

} // namespace talmo
