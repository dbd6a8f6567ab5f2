#pragma once

#include "Control/ControlServer.h"
#include "Insertion/PasteReceipt.h"

#include <memory>

namespace talmo::ctl {

/// Clipboard content that a command in the background keeps because the text that replaced it was not read. Another
/// command of the same user can have it restored. Main thread.
class HeldClipboard {
public:
    /// Listens until it is destroyed.
    HeldClipboard(const std::shared_ptr<PasteWitness> &witness, std::shared_ptr<Clock> clock);

    /// Has the process that keeps earlier content restore it, and waits until it has; false if there is none.
    static bool restore();

private:
    ControlServer m_server;
};

} // namespace talmo::ctl
