#include "App/Trace/TracedPaste.h"

#include <utility>

namespace talmo {

using Stage = DictationTrace::Stage;

TracedPasteboard::TracedPasteboard(std::shared_ptr<Pasteboard> pasteboard, std::shared_ptr<DictationTrace> trace)
    : m_pasteboard(std::move(pasteboard)),
      m_trace(std::move(trace))
{
}

void TracedPasteboard::beginPaste()
{
    m_pasteboard->beginPaste();
}

void TracedPasteboard::endPaste()
{
    m_pasteboard->endPaste();
    m_pasteboard->settled().then([trace = m_trace] { trace->note(Stage::Restored); });
}

QFuture<QList<PasteboardItem>> TracedPasteboard::items()
{
    return m_pasteboard->items();
}

void TracedPasteboard::clearContents()
{
    m_pasteboard->clearContents();
}

void TracedPasteboard::setString(const QString &text)
{
    m_pasteboard->setString(text);
    m_trace->note(Stage::ClipboardClaimed);
}

void TracedPasteboard::writeItems(const QList<PasteboardItem> &items)
{
    m_pasteboard->writeItems(items);
}

QFuture<void> TracedPasteboard::settled()
{
    return m_pasteboard->settled();
}

TracedKeyPoster::TracedKeyPoster(std::shared_ptr<KeyEventPoster> poster, std::shared_ptr<PasteWitness> witness,
                                 std::shared_ptr<DictationTrace> trace)
    : m_poster(std::move(poster)),
      m_witness(std::move(witness)),
      m_trace(std::move(trace))
{
}

std::optional<KeyEvent> TracedKeyPoster::makeKeyboardEvent(quint16 keyCode, bool isDown)
{
    return m_poster->makeKeyboardEvent(keyCode, isDown);
}

void TracedKeyPoster::post(const KeyEvent &event)
{
    m_poster->post(event);
    if (event.isDown) {
        m_trace->note(Stage::Chord);
        m_witness->receipt().then([trace = m_trace](const PasteReceipt &receipt) {
            if (receipt.outcome == PasteReceipt::Outcome::Taken) {
                trace->note(Stage::Read);
            }
        });
    }
}

} // namespace talmo
