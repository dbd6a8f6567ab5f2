#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"

#include <utility>

namespace talmo {

XcbPasteboard::XcbPasteboard(std::shared_ptr<XSession> session, std::chrono::milliseconds secretTime)
    : SessionPasteboard(std::move(session),
                        [secretTime](XSession &on) { return std::make_shared<PasteTransaction>(on, secretTime); })
{
}

QFuture<void> XcbPasteboard::shutDown()
{
    return session()->executor().run<void>(
        [transaction = transaction()] { return PasteTransaction::shutDown(transaction); });
}

} // namespace talmo
