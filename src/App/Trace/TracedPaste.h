#pragma once

#include "App/Trace/DictationTrace.h"
#include "Insertion/KeyEventPoster.h"
#include "Insertion/PasteReceipt.h"
#include "Insertion/Pasteboard.h"

#include <memory>

namespace talmo {

/// Notes when the text is put on the pasteboard, and when the earlier content is back.
class TracedPasteboard final : public Pasteboard {
public:
    TracedPasteboard(std::shared_ptr<Pasteboard> pasteboard, std::shared_ptr<DictationTrace> trace);

    void beginPaste() override;
    void endPaste() override;
    QFuture<QList<PasteboardItem>> items() override;
    void clearContents() override;
    void setString(const QString &text) override;
    void writeItems(const QList<PasteboardItem> &items) override;
    QFuture<void> settled() override;

private:
    std::shared_ptr<Pasteboard> m_pasteboard;
    std::shared_ptr<DictationTrace> m_trace;
};

/// Notes when the paste shortcut is posted, and when the text has been read because of it.
class TracedKeyPoster final : public KeyEventPoster {
public:
    TracedKeyPoster(std::shared_ptr<KeyEventPoster> poster, std::shared_ptr<PasteWitness> witness,
                    std::shared_ptr<DictationTrace> trace);

    std::optional<KeyEvent> makeKeyboardEvent(quint16 keyCode, bool isDown) override;
    void post(const KeyEvent &event) override;

private:
    std::shared_ptr<KeyEventPoster> m_poster;
    std::shared_ptr<PasteWitness> m_witness;
    std::shared_ptr<DictationTrace> m_trace;
};

} // namespace talmo
