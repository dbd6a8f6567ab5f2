#pragma once

#include "App/LastDictation.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/Pasteboard.h"

#include <memory>
#include <optional>

namespace talmo {

/// What the user can recover: the last dictation, and the clipboard content replaced by a text that was not read. Main
/// thread.
class DictationRecovery {
public:
    DictationRecovery(std::shared_ptr<LastDictation> last, std::shared_ptr<Pasteboard> pasteboard,
                      std::shared_ptr<PasteWitness> witness);

    /// Nullopt before the first dictation.
    std::optional<QString> lastText() const { return m_last->text(); }
    std::optional<QString> lastRawText() const { return m_last->rawText(); }
    /// Copies the last dictation to the clipboard, as if the user had; does nothing without one.
    void copyLastText();
    /// Copies a text to the clipboard, as if the user had.
    void copy(const QString &text);

    bool holdsEarlierClipboard() const { return m_witness->holdsEarlierClipboard(); }
    /// False if there is none left.
    QFuture<bool> putEarlierClipboardBack() { return m_witness->putEarlierClipboardBack(); }

private:
    std::shared_ptr<LastDictation> m_last;
    std::shared_ptr<Pasteboard> m_pasteboard;
    std::shared_ptr<PasteWitness> m_witness;
};

} // namespace talmo
