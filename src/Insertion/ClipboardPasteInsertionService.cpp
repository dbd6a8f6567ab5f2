#include "Insertion/ClipboardPasteInsertionService.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

namespace {

QString description(TextInsertionError::Case which)
{
    if (which == TextInsertionError::Case::AccessibilityNotGranted) {
        return QStringLiteral(
            QT_TRANSLATE_NOOP("Talmo", "Talmo needs Accessibility access (System Settings > Privacy & Security > "
                                       "Accessibility) to insert text into other apps."));
    }
    return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Nothing to insert."));
}

/// Calls endPaste() on every path, including a cancelled wait.
class PasteBracket {
public:
    explicit PasteBracket(std::shared_ptr<Pasteboard> pasteboard)
        : m_pasteboard(std::move(pasteboard))
    {
        m_pasteboard->beginPaste();
    }
    ~PasteBracket() { m_pasteboard->endPaste(); }
    PasteBracket(const PasteBracket &) = delete;
    PasteBracket &operator=(const PasteBracket &) = delete;

private:
    std::shared_ptr<Pasteboard> m_pasteboard;
};

} // namespace

TextInsertionError::TextInsertionError(Case which)
    : Error(description(which)),
      m_case(which)
{
}

ClipboardPasteInsertionService::ClipboardPasteInsertionService(std::shared_ptr<Pasteboard> pasteboard,
                                                               std::shared_ptr<KeyEventPoster> keyPoster,
                                                               std::shared_ptr<InputTrust> inputTrust,
                                                               std::shared_ptr<Clock> clock)
    : m_parts{std::move(pasteboard), std::move(keyPoster), std::move(inputTrust), std::move(clock)}
{
}

QCoro::Task<void> ClipboardPasteInsertionService::insert(QString text)
{
    return paste(m_parts, text, {});
}

QCoro::Task<void> ClipboardPasteInsertionService::insert(QString text, std::stop_token stop)
{
    return paste(m_parts, text, stop);
}

QCoro::Task<void> ClipboardPasteInsertionService::paste(Parts parts, QString text, std::stop_token stop)
{
    if (text.isEmpty()) {
        throw TextInsertionError(TextInsertionError::Case::EmptyText);
    }
    if (!parts.inputTrust->isTrusted()) {
        throw TextInsertionError(TextInsertionError::Case::AccessibilityNotGranted);
    }
    const PasteBracket bracket(parts.pasteboard);
    const QList<PasteboardItem> snapshot = co_await parts.pasteboard->items();
    parts.pasteboard->clearContents();
    parts.pasteboard->setString(text);
    co_await parts.clock->sleep(pasteboardChangeTime, stop);
    postPasteShortcut(*parts.keyPoster);
    co_await parts.clock->sleep(pasteTime, stop);
    parts.pasteboard->clearContents();
    if (!snapshot.isEmpty()) {
        parts.pasteboard->writeItems(snapshot);
    }
}

void ClipboardPasteInsertionService::postPasteShortcut(KeyEventPoster &poster)
{
    auto down = poster.makeKeyboardEvent(pasteKeyCode, true);
    if (down) {
        down->flags = commandFlag;
    }
    auto up = poster.makeKeyboardEvent(pasteKeyCode, false);
    if (up) {
        up->flags = commandFlag;
    }
    for (const auto &event : {down, up}) {
        if (event) {
            poster.post(*event);
        }
    }
}

} // namespace talmo
