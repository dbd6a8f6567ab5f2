#pragma once

#include "Insertion/KeyEventPoster.h"
#include "Platform/Linux/Keys/ShellPaster.h"
#include "Platform/Linux/Wayland/Clipboard/WaylandPasteTransaction.h"
#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"
#include "Platform/Linux/Wayland/WaylandSession.h"

#include <memory>

namespace talmo {

/// Posts the paste shortcut, in the form that the frontmost program expects; the whole shortcut is sent on the key
/// press. Without a keyboard, `paster` presses it; without that, the text stays on the clipboard.
class WaylandKeyEventPoster final : public KeyEventPoster {
public:
    WaylandKeyEventPoster(std::shared_ptr<WaylandSession> session, std::shared_ptr<WaylandPasteTransaction> transaction,
                          std::shared_ptr<ShellPaster> paster = nullptr);
    ~WaylandKeyEventPoster() override;

    std::optional<KeyEvent> makeKeyboardEvent(quint16 keyCode, bool isDown) override;
    void post(const KeyEvent &event) override;

    bool hasKeyboard() const { return m_keyboard != nullptr; }

private:
    static void postOnceFocused(std::shared_ptr<ChordKeyboard> keyboard, WaylandSession *session,
                                std::shared_ptr<WaylandPasteTransaction> transaction, int tries);
    static void postByPaster(WaylandSession *session, std::shared_ptr<WaylandPasteTransaction> transaction,
                             std::shared_ptr<ShellPaster> paster);
    static QCoro::Task<void> pressByPaster(std::weak_ptr<WaylandPasteTransaction> transaction,
                                           std::shared_ptr<ShellPaster> paster, PasteStyle style);

    std::shared_ptr<WaylandSession> m_session;
    std::shared_ptr<WaylandPasteTransaction> m_transaction;
    std::shared_ptr<ChordKeyboard> m_keyboard;
    std::shared_ptr<ShellPaster> m_paster;
};

} // namespace talmo
