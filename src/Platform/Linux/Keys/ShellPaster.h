#pragma once

#include "Insertion/PasteReceipt.h"
#include "Insertion/PasteStyle.h"

#include <QFuture>

namespace talmo {

/// Pastes into windows that the X server does not know, by having the desktop's shell press the shortcut. Any thread;
/// the futures finish on any.
class ShellPaster {
public:
    /// The window with the keyboard focus.
    struct Front {
        /// The shell's own number for it; 0 if no window has the focus, or the shell does not answer within a second.
        quint64 window = 0;
        PasteStyle style = PasteStyle::ControlV;
        /// See RestorePolicy::postToImporter().
        bool isImporter = false;
    };

    virtual ~ShellPaster() = default;

    /// Whether the shell can be asked now. Never blocks.
    virtual bool isAvailable() const = 0;
    /// Whether front() can name a window. If not, it names a style that pastes everywhere, if both selections hold the
    /// text. Never blocks.
    virtual bool isFrontKnown() const { return true; }
    virtual QFuture<Front> front() = 0;
    /// Presses the shortcut if this window still has the focus; Taken means pressed. Finishes within two seconds.
    virtual QFuture<PasteReceipt::Outcome> press(quint64 window, PasteStyle style) = 0;
};

} // namespace talmo
