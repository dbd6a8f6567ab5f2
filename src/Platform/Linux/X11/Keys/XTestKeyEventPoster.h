#pragma once

#include "Insertion/KeyEventPoster.h"
#include "Platform/Linux/X11/Clipboard/PasteTransaction.h"
#include "Platform/Linux/X11/XSession.h"

#include <memory>

namespace talmo {

/// Types through the XTEST extension. It knows one chord, the paste shortcut, and types it as the program in front
/// wants it; the whole chord goes out with the key that goes down.
class XTestKeyEventPoster final : public KeyEventPoster {
public:
    XTestKeyEventPoster(std::shared_ptr<XSession> session, std::shared_ptr<PasteTransaction> transaction);

    std::optional<KeyEvent> makeKeyboardEvent(quint16 keyCode, bool isDown) override;
    void post(const KeyEvent &event) override;

private:
    static void postOnceFree(XSession *session, std::shared_ptr<PasteTransaction> transaction, int tries);
    static void postChord(XSession &session, PasteTransaction &transaction);

    std::shared_ptr<XSession> m_session;
    std::shared_ptr<PasteTransaction> m_transaction;
};

} // namespace talmo
