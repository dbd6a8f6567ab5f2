#pragma once

#include <QFuture>
#include <QString>

namespace talmo {

/// How a paste ended: whether the frontmost application has read the text, and if not, why.
struct PasteReceipt {
    enum class Outcome {
        Taken,
        /// The window responds, but has not read the text.
        NotTaken,
        /// The window does not respond; it receives the text once it does.
        WindowHangs,
        /// No window has keyboard focus.
        NoWindow,
        /// Another program has grabbed the keyboard, such as a screen locker or an open menu.
        KeyboardGrabbed,
        /// The keyboard layout has no key for the paste shortcut.
        NoPasteKey,
        /// The desktop lets Talmo post no keys to this window.
        CannotType,
        /// Another window became active between choosing the shortcut and posting it.
        WindowChanged,
        /// Another program took the clipboard before the text was read.
        ClipboardLost,
    };

    Outcome outcome = Outcome::Taken;
    /// The shortcut that pastes in that window, such as "Ctrl+V".
    QString shortcut = QStringLiteral("Ctrl+V");

    bool operator==(const PasteReceipt &) const = default;
};

/// Reports the outcome of a paste, and keeps the clipboard content that it replaced. Main thread.
class PasteWitness {
public:
    virtual ~PasteWitness() = default;

    /// The outcome of the last paste. Finishes within two seconds of its shortcut.
    virtual QFuture<PasteReceipt> receipt() = 0;

    /// A text that was not read has replaced something else on the clipboard.
    virtual bool holdsEarlierClipboard() const = 0;
    /// Restores the clipboard content replaced by a text that was not read; false if there is none.
    virtual QFuture<bool> putEarlierClipboardBack() = 0;
};

} // namespace talmo
