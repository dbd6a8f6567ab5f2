#include "Platform/Linux/XTestKeyEventPoster.h"

#include "Base/Log.h"
#include "Insertion/ClipboardPasteInsertionService.h"
#include "Platform/Linux/KeyboardLayoutReader.h"

#include <xcb/xtest.h>

#include <utility>

namespace talmo {

XTestKeyEventPoster::XTestKeyEventPoster(std::shared_ptr<XSession> session,
                                         std::shared_ptr<PasteTransaction> transaction)
    : m_session(std::move(session)),
      m_transaction(std::move(transaction))
{
}

std::optional<KeyEvent> XTestKeyEventPoster::makeKeyboardEvent(quint16 keyCode, bool isDown)
{
    return KeyEvent{keyCode, isDown, 0};
}

void XTestKeyEventPoster::post(const KeyEvent &event)
{
    const bool isPaste = event.keyCode == ClipboardPasteInsertionService::pasteKeyCode &&
                         event.flags == ClipboardPasteInsertionService::commandFlag;
    if (!isPaste) {
        generalLog().error("a key was not posted: only the paste shortcut is known");
        return;
    }
    if (!event.isDown) {
        return; // Went out with the key that went down.
    }
    m_session->executor().post(
        [session = m_session.get(), transaction = m_transaction] { postChord(*session, *transaction); });
}

void XTestKeyEventPoster::postChord(XSession &session, PasteTransaction &transaction)
{
    const auto style = transaction.beginChord();
    const auto chord = pasteChord(readKeyboardLayout(session.connection()), style);
    if (chord.empty()) {
        generalLog().error("the keyboard has no key to paste with");
        return;
    }
    auto *connection = session.connection().get();
    for (const auto &key : chord) {
        session.postedKeys()->expect(key.keyCode, key.isDown);
        const auto type = static_cast<quint8>(key.isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE);
        xcb_test_fake_input(connection, type, key.keyCode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }
    session.flush();
}

} // namespace talmo
