#pragma once

#include <QFuture>
#include <QString>

namespace talmo {

/// How a paste ended: the program in front has read the text, or nobody has, and why.
struct PasteReceipt {
    enum class Outcome {
        Taken,
        /// The window answers, but has not read the text.
        NotTaken,
        /// The window does not answer; it gets the text when it does.
        WindowHangs,
        /// No window has the keyboard.
        NoWindow,
        /// Another program has grabbed the keyboard: a screen locker, an open menu.
        KeyboardGrabbed,
        /// The keyboard has no key that the paste shortcut could be made of.
        NoPasteKey,
        /// Another window came to the front between choosing the shortcut and posting it.
        WindowChanged,
        /// Another program has taken the clipboard before the text was read.
        ClipboardLost,
    };

    Outcome outcome = Outcome::Taken;
    /// What a person presses to paste in that window, such as "Ctrl+V".
    QString shortcut = QStringLiteral("Ctrl+V");

    bool operator==(const PasteReceipt &) const = default;
};

/// Tells what became of a paste, and keeps the clipboard that it has displaced. Main thread.
class PasteWitness {
public:
    virtual ~PasteWitness() = default;

    /// What became of the paste that was made last. Finishes within two seconds of its shortcut.
    virtual QFuture<PasteReceipt> receipt() = 0;

    /// A text that nobody took stands in place of something else.
    virtual bool holdsEarlierClipboard() const = 0;
    /// Puts back what stood on the clipboard before a text that nobody took; false when there is no such thing.
    virtual QFuture<bool> putEarlierClipboardBack() = 0;
};

} // namespace talmo
