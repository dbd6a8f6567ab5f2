#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"

#include "Base/Log.h"
#include "Platform/Linux/Keys/PastePress.h"
#include "Platform/Linux/X11/Keys/KeyboardLayoutReader.h"

#include <QTimer>

#include <xcb/xtest.h>

#include <chrono>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;
constexpr auto pause = 25ms;
constexpr auto longestWait = 250ms;
constexpr auto offerPause = 5ms;
constexpr auto longestOffer = 1000ms;

} // namespace

XTestKeyEventPoster::XTestKeyEventPoster(std::shared_ptr<XSession> session,
                                         std::shared_ptr<PasteTransaction> transaction,
                                         std::shared_ptr<ShellPaster> shell)
    : m_session(std::move(session)),
      m_transaction(std::move(transaction)),
      m_shell(std::move(shell))
{
}

std::optional<KeyEvent> XTestKeyEventPoster::makeKeyboardEvent(quint16 keyCode, bool isDown)
{
    return KeyEvent{keyCode, isDown, 0};
}

void XTestKeyEventPoster::post(const KeyEvent &event)
{
    if (!isPastePress(event)) {
        return;
    }
    m_session->executor().post([session = m_session.get(), transaction = m_transaction, shell = m_shell] {
        if (shell && shell->isAvailable() && frontWindow(*session).window == XCB_NONE) {
            startByShell(session, transaction, shell, longestWait / pause);
        } else {
            postOnceFree(session, transaction, longestWait / pause);
        }
    });
}

void XTestKeyEventPoster::startByShell(XSession *session, std::shared_ptr<PasteTransaction> transaction,
                                       std::shared_ptr<ShellPaster> shell, int tries)
{
    session->executor().run<void>(
        [session, transaction, shell, tries] { return postByShell(session, transaction, shell, tries); });
}

/// While a window is closed, no other one has the focus for a moment.
QCoro::Task<void> XTestKeyEventPoster::postByShell(XSession *session, std::shared_ptr<PasteTransaction> transaction,
                                                   std::shared_ptr<ShellPaster> shell, int tries)
{
    const auto asked = shell->front();
    const auto front = co_await asked;
    if (frontWindow(*session).window != XCB_NONE) {
        postOnceFree(session, transaction, tries); // A window of the server came to the front in the meantime.
        co_return;
    }
    if (front.window == 0 && tries > 0) {
        QTimer::singleShot(pause, session->executor().context(), [session, transaction, shell, tries] {
            startByShell(session, transaction, shell, tries - 1);
        });
        co_return;
    }
    auto target = front.window == 0 ? FrontWindow() : windowBeyondServer(*session);
    target.style = front.style;
    target.isImporter = front.isImporter;
    if (transaction->chooseTarget(target)) {
        pressOnceOffered(session, transaction, shell, target, front.window, longestOffer / offerPause);
    }
}

/// The compositor offers the text to the windows of Wayland only after it has learnt its types.
void XTestKeyEventPoster::pressOnceOffered(XSession *session, std::shared_ptr<PasteTransaction> transaction,
                                           std::shared_ptr<ShellPaster> shell, const FrontWindow &target,
                                           quint64 window, int tries)
{
    if (!transaction->isOfferedBy(target.client) && tries > 0) {
        QTimer::singleShot(offerPause, session->executor().context(),
                           [session, transaction, shell, target, window, tries] {
                               pressOnceOffered(session, transaction, shell, target, window, tries - 1);
                           });
        return;
    }
    if (tries == 0) {
        generalLog().info("the compositor has not asked for the text; the shortcut is pressed nevertheless");
    }
    session->executor().run<void>([session, transaction, shell, target, window] {
        return pressByShell(session, transaction, shell, target, window);
    });
}

QCoro::Task<void> XTestKeyEventPoster::pressByShell(XSession *session, std::shared_ptr<PasteTransaction> transaction,
                                                    std::shared_ptr<ShellPaster> shell, FrontWindow target,
                                                    quint64 window)
{
    // Before the shell is asked: the program may read the text before the shell's answer arrives.
    transaction->notePosted(target);
    const auto pressed = shell->press(window, target.style);
    const auto outcome = co_await pressed;
    if (outcome != PasteReceipt::Outcome::Taken) {
        transaction->refuse(outcome);
    }
    session->flush();
}

/// Posts the shortcut when a window has the keyboard for itself: menus and window switchers grab it for a moment, and
/// after a window is closed it takes a moment until another one has it. The key that ended a hands-free recording may
/// still be down, so its release is awaited.
void XTestKeyEventPoster::postOnceFree(XSession *session, std::shared_ptr<PasteTransaction> transaction, int tries)
{
    const bool isGrabbed = isKeyboardGrabbed(*session);
    const auto front = isGrabbed ? FrontWindow() : frontWindow(*session);
    const int triesLeft = session->postedKeys()->isTriggerGrabbed() ? tries : tries - 1;
    if (front.window == XCB_NONE && triesLeft >= 0) {
        QTimer::singleShot(pause, session->executor().context(),
                           [session, transaction, triesLeft] { postOnceFree(session, transaction, triesLeft); });
    } else if (isGrabbed) {
        transaction->refuse(PasteReceipt::Outcome::KeyboardGrabbed);
    } else if (front.window == XCB_NONE && session->isNested()) {
        transaction->refuse(PasteReceipt::Outcome::CannotType); // A Wayland window is in front.
    } else {
        postChord(*session, *transaction, front);
    }
}

void XTestKeyEventPoster::postChord(XSession &session, PasteTransaction &transaction, const FrontWindow &front)
{
    if (!transaction.chooseTarget(front)) {
        return;
    }
    const auto chord = pasteShortcut(readKeyboardLayout(session.connection()), front.style);
    if (chord.empty()) {
        transaction.refuse(PasteReceipt::Outcome::NoPasteKey);
        return;
    }
    auto *connection = session.connection().get();
    // Keeps the focus from moving between the last check and the keys.
    xcb_grab_server(connection);
    const bool isStillInFront = !isKeyboardGrabbed(session) && frontWindow(session).window == front.window;
    if (isStillInFront) {
        for (const auto &key : chord) {
            session.postedKeys()->expect(key.keyCode, key.isDown);
            const auto type = static_cast<quint8>(key.isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE);
            xcb_test_fake_input(connection, type, key.keyCode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        }
    }
    xcb_ungrab_server(connection);
    if (isStillInFront) {
        transaction.notePosted(front);
    } else {
        transaction.refuse(PasteReceipt::Outcome::WindowChanged);
    }
    session.flush();
}

} // namespace talmo
