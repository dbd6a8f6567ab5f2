#include "Platform/Linux/Wayland/Portal/LentKeyboardPaster.h"

#include "Base/Completion.h"
#include "Platform/Linux/Wayland/Keys/ChordKeyboard.h"

#include <utility>

namespace talmo {

LentKeyboardPaster::LentKeyboardPaster(std::shared_ptr<LentKeyboard> keyboard, std::shared_ptr<ShellPaster> better)
    : m_keyboard(std::move(keyboard)),
      m_better(std::move(better))
{
}

QFuture<ShellPaster::Front> LentKeyboardPaster::front()
{
    return hasBetter() ? m_better->front() : makeReadyFuture(Front{anyWindow, PasteStyle::ShiftInsertPrimary, false});
}

QFuture<PasteReceipt::Outcome> LentKeyboardPaster::press(quint64 window, PasteStyle style)
{
    using Outcome = PasteReceipt::Outcome;
    if (window != anyWindow) {
        return m_better ? m_better->press(window, style) : makeReadyFuture(Outcome::CannotType);
    }
    const auto answer = Completion<Outcome>::make();
    QMetaObject::invokeMethod(this, [this, style, answer] {
        if (!m_isAllowed) {
            answer->finish(Outcome::CannotType);
            return;
        }
        m_keyboard->press(ChordKeyboard::keysOf(style),
                          [answer](bool wasLent) { answer->finish(wasLent ? Outcome::Taken : Outcome::CannotType); });
    });
    return answer->future();
}

} // namespace talmo
