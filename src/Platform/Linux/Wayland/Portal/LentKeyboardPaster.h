#pragma once

#include "Platform/Linux/Keys/ShellPaster.h"
#include "Platform/Linux/Wayland/Portal/LentKeyboard.h"

#include <QObject>

#include <atomic>
#include <limits>
#include <memory>

namespace talmo {

/// Pastes with a keyboard that the desktop lends, if the user has allowed that. The desktop does not say which window
/// is in front, so the shortcut is the one that pastes everywhere if both selections hold the text. Made on the main
/// thread.
class LentKeyboardPaster final : public QObject, public ShellPaster {
    Q_OBJECT
public:
    /// Whatever has the focus when the keys arrive.
    static constexpr quint64 anyWindow = std::numeric_limits<quint64>::max();

    /// `better`: used while it is available; may be null.
    LentKeyboardPaster(std::shared_ptr<LentKeyboard> keyboard, std::shared_ptr<ShellPaster> better);

    /// Any thread.
    void setAllowed(bool isAllowed) { m_isAllowed = isAllowed; }

    bool isAvailable() const override { return m_isAllowed || hasBetter(); }
    bool isFrontKnown() const override { return hasBetter(); }
    QFuture<Front> front() override;
    QFuture<PasteReceipt::Outcome> press(quint64 window, PasteStyle style) override;

private:
    bool hasBetter() const { return m_better && m_better->isAvailable(); }

    std::shared_ptr<LentKeyboard> m_keyboard;
    std::shared_ptr<ShellPaster> m_better;
    std::atomic<bool> m_isAllowed = false;
};

} // namespace talmo
