#include "Platform/Linux/Wayland/WaylandPasting.h"

#include "Platform/Linux/Wayland/Clipboard/WaylandPasteboard.h"
#include "Platform/Linux/Wayland/Keys/WaylandInputTrust.h"
#include "Platform/Linux/Wayland/Keys/WaylandKeyEventPoster.h"
#include "Platform/Linux/Wayland/Windows/WaylandFocusedField.h"

namespace talmo {

Pasting openWaylandPasting(const std::shared_ptr<WaylandSession> &session)
{
    const auto pasteboard = std::make_shared<WaylandPasteboard>(session);
    return {pasteboard,
            pasteboard,
            std::make_shared<WaylandKeyEventPoster>(session, pasteboard->transaction()),
            std::make_shared<WaylandInputTrust>(),
            std::make_shared<WaylandFocusedField>(),
            [pasteboard] { return pasteboard->shutDown(); },
            [pasteboard] { return pasteboard->ownershipLost(); },
            [pasteboard](const std::function<void()> &callback) {
                pasteboard->setOnLoss([callback](OfferReading::Loss /*loss*/) { callback(); });
            }};
}

} // namespace talmo
