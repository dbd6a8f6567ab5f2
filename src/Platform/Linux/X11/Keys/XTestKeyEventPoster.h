#pragma once

#include "Insertion/KeyEventPoster.h"
#include "Platform/Linux/Keys/ShellPaster.h"
#include "Platform/Linux/X11/Clipboard/PasteTransaction.h"
#include "Platform/Linux/X11/XSession.h"

#include <memory>

namespace talmo {

/// Types through the XTEST extension. It supports only the paste shortcut, in the form that the frontmost program
/// expects; the whole shortcut is sent on the key press.
class XTestKeyEventPoster final : public KeyEventPoster {
public:
    /// `shell`, if there is one, types into windows that are not the server's.
    XTestKeyEventPoster(std::shared_ptr<XSession> session, std::shared_ptr<PasteTransaction> transaction,
                        std::shared_ptr<ShellPaster> shell = nullptr);

    std::optional<KeyEvent> makeKeyboardEvent(quint16 keyCode, bool isDown) override;
    void post(const KeyEvent &event) override;

private:
    static void postOnceFree(XSession *session, std::shared_ptr<PasteTransaction> transaction, int tries);
    static void startByShell(XSession *session, std::shared_ptr<PasteTransaction> transaction,
                             std::shared_ptr<ShellPaster> shell, int tries);
    static QCoro::Task<void> postByShell(XSession *session, std::shared_ptr<PasteTransaction> transaction,
                                         std::shared_ptr<ShellPaster> shell, int tries);
    static void pressOnceOffered(XSession *session, std::shared_ptr<PasteTransaction> transaction,
                                 std::shared_ptr<ShellPaster> shell, const FrontWindow &target, quint64 window,
                                 int tries);
    static QCoro::Task<void> pressByShell(XSession *session, std::shared_ptr<PasteTransaction> transaction,
                                          std::shared_ptr<ShellPaster> shell, FrontWindow target, quint64 window);
    static void postChord(XSession &session, PasteTransaction &transaction, const FrontWindow &front);

    std::shared_ptr<XSession> m_session;
    std::shared_ptr<PasteTransaction> m_transaction;
    std::shared_ptr<ShellPaster> m_shell;
};

} // namespace talmo
