#pragma once

#include "Platform/Linux/Session/SessionPasteboard.h"
#include "Platform/Linux/X11/Clipboard/PasteTransaction.h"
#include "Platform/Linux/X11/XSession.h"

#include <memory>

namespace talmo {

/// The clipboard of the X session.
class XcbPasteboard final : public SessionPasteboard<XSession, PasteTransaction> {
public:
    /// `secretTime`: see SecretLifetime.
    explicit XcbPasteboard(std::shared_ptr<XSession> session,
                           std::chrono::milliseconds secretTime = SecretLifetime::longestTime);

    /// Completes a pending restore and passes the clipboard on; nothing can be pasted afterwards. Finishes within two
    /// and a half seconds.
    QFuture<void> shutDown();
};

} // namespace talmo
