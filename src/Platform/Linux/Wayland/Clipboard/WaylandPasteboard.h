#pragma once

#include "Platform/Linux/Session/SessionPasteboard.h"
#include "Platform/Linux/Wayland/Clipboard/WaylandPasteTransaction.h"

#include <memory>

namespace talmo {

/// The clipboard of the Wayland session, by data control.
class WaylandPasteboard final : public SessionPasteboard<WaylandSession, WaylandPasteTransaction> {
public:
    /// `secretTime`: see WaylandPasteTransaction.
    explicit WaylandPasteboard(std::shared_ptr<WaylandSession> session,
                               std::chrono::milliseconds secretTime = SecretLifetime::longestTime);

    /// Completes a pending restore; nothing can be pasted afterwards. Finishes within two and a half seconds.
    QFuture<void> shutDown();
};

} // namespace talmo
