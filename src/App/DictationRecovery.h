#pragma once

#include "App/LastDictation.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/Pasteboard.h"

#include <memory>
#include <optional>

namespace talmo {

/// What people can get back: the last dictation, and the clipboard that a text nobody took has displaced. Main thread.
class DictationRecovery {
public:
    DictationRecovery(std::shared_ptr<LastDictation> last, std::shared_ptr<Pasteboard> pasteboard,
                      std::shared_ptr<PasteWitness> witness);

    /// None before the first dictation.
    std::optional<QString> lastText() const { return m_last->text(); }
    std::optional<QString> lastRawText() const { return m_last->rawText(); }
    /// Puts the last dictation on the clipboard, as if the user had copied it; nothing without one.
    void copyLastText();

    bool holdsEarlierClipboard() const { return m_witness->holdsEarlierClipboard(); }
    /// False when there is none any more.
    QFuture<bool> putEarlierClipboardBack() { return m_witness->putEarlierClipboardBack(); }

private:
    std::shared_ptr<LastDictation> m_last;
    std::shared_ptr<Pasteboard> m_pasteboard;
    std::shared_ptr<PasteWitness> m_witness;
};

} // namespace talmo
