#include "Platform/Linux/Wayland/Keys/WaylandKeyEventPoster.h"

#include "Base/Log.h"
#include "Platform/Linux/Keys/PastePress.h"

#include <QCoro/QCoroFuture>
#include <QTimer>

#include <chrono>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;
constexpr auto pause = 25ms;
constexpr auto longestWait = 250ms;

} // namespace

WaylandKeyEventPoster::WaylandKeyEventPoster(std::shared_ptr<WaylandSession> session,
                                             std::shared_ptr<WaylandPasteTransaction> transaction,
                                             std::shared_ptr<ShellPaster> paster)
    : m_session(std::move(session)),
      m_transaction(std::move(transaction)),
      m_keyboard(m_session->executor()
                     .call([raw = m_session.get()] { return std::shared_ptr(ChordKeyboard::open(*raw)); })
                     .result()),
      m_paster(std::move(paster))
{
}

WaylandKeyEventPoster::~WaylandKeyEventPoster()
{
    m_session->executor()
        .call([keyboard = std::move(m_keyboard), transaction = std::move(m_transaction)]() mutable {
            keyboard.reset();
            transaction.reset();
        })
        .waitForFinished();
}

std::optional<KeyEvent> WaylandKeyEventPoster::makeKeyboardEvent(quint16 keyCode, bool isDown)
{
    return KeyEvent{keyCode, isDown, 0};
}

void WaylandKeyEventPoster::post(const KeyEvent &event)
{
    if (!isPastePress(event)) {
        return;
    }
    m_session->executor().post(
        [keyboard = m_keyboard, session = m_session.get(), transaction = m_transaction, paster = m_paster] {
            if (keyboard) {
                postOnceFocused(keyboard, session, transaction, longestWait / pause);
            } else if (paster && paster->isAvailable()) {
                postByPaster(session, transaction, paster);
            } else {
                transaction->chooseStyle(transaction->front());
                transaction->refuse(PasteReceipt::Outcome::CannotType);
            }
        });
}

void WaylandKeyEventPoster::postByPaster(WaylandSession *session, std::shared_ptr<WaylandPasteTransaction> transaction,
                                         std::shared_ptr<ShellPaster> paster)
{
    const auto style = transaction->chooseStyle(transaction->front());
    transaction->notePosted(); // Before it is pressed: the program may read the text before the answer arrives.
    session->executor().run<void>(
        [weak = std::weak_ptr(transaction), paster, style] { return pressByPaster(weak, paster, style); });
}

QCoro::Task<void> WaylandKeyEventPoster::pressByPaster(std::weak_ptr<WaylandPasteTransaction> transaction,
                                                       std::shared_ptr<ShellPaster> paster, PasteStyle style)
{
    const auto asked = paster->front();
    const auto front = co_await asked;
    const auto pressed = paster->press(front.window, style);
    const auto outcome = co_await pressed;
    const auto posted = transaction.lock();
    if (posted && outcome != PasteReceipt::Outcome::Taken) {
        posted->refuse(outcome);
    }
}

/// After a window is closed it takes a moment until another one has the focus. A launcher has the keyboard although no
/// window has the focus, so the shortcut is posted in the end.
void WaylandKeyEventPoster::postOnceFocused(std::shared_ptr<ChordKeyboard> keyboard, WaylandSession *session,
                                            std::shared_ptr<WaylandPasteTransaction> transaction, int tries)
{
    const auto front = transaction->front();
    if (front.isNone && tries > 0) {
        // Weak: none of them may outlive the session's connection.
        QTimer::singleShot(pause, session->executor().context(),
                           [weakKeyboard = std::weak_ptr(keyboard), session, weak = std::weak_ptr(transaction), tries] {
                               const auto chord = weakKeyboard.lock();
                               const auto waiting = weak.lock();
                               if (chord && waiting) {
                                   postOnceFocused(chord, session, waiting, tries - 1);
                               }
                           });
        return;
    }
    keyboard->post(ChordKeyboard::keysOf(transaction->chooseStyle(front)));
    session->whenCarriedOut([weak = std::weak_ptr(transaction)] {
        if (const auto posted = weak.lock()) {
            posted->notePosted();
        }
    });
}

} // namespace talmo
