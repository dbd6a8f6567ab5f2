#include "Platform/Linux/Wayland/Clipboard/WaylandPasteboard.h"

#include <utility>

namespace talmo {

WaylandPasteboard::WaylandPasteboard(std::shared_ptr<WaylandSession> session, std::chrono::milliseconds secretTime)
    : SessionPasteboard(std::move(session), [secretTime](WaylandSession &on) {
          auto transaction = std::make_shared<WaylandPasteTransaction>(std::make_shared<DataControl>(on),
                                                                       openFrontSource(on), secretTime);
          on.addOnConnectionLost([weak = std::weak_ptr(transaction)] {
              if (const auto alive = weak.lock()) {
                  alive->handleConnectionLost();
              }
          });
          return transaction;
      })
{
}

QFuture<void> WaylandPasteboard::shutDown()
{
    endPaste(); // Nothing else would end a paste in progress; the content it saved is still restored.
    return settled();
}

} // namespace talmo
