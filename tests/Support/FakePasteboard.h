#pragma once

#include "Base/Completion.h"
#include "Insertion/KeyEventPoster.h"
#include "Insertion/Pasteboard.h"

#include <string>
#include <vector>

namespace talmo::test {

/// An in-memory pasteboard and a key event poster that record their calls in one list.
class FakePasteboard final : public Pasteboard {
public:
    std::vector<std::string> calls;
    QList<PasteboardItem> content;

    void beginPaste() override { calls.emplace_back("beginPaste"); }
    void endPaste() override { calls.emplace_back("endPaste"); }
    QFuture<QList<PasteboardItem>> items() override
    {
        calls.emplace_back("items");
        return makeReadyFuture(QList<PasteboardItem>(content));
    }
    void clearContents() override
    {
        calls.emplace_back("clear");
        content.clear();
    }
    void setString(const QString &text) override
    {
        calls.push_back("setString " + text.toStdString());
        content = {PasteboardItem{{{QStringLiteral("UTF8_STRING"), text.toUtf8(), QStringLiteral("UTF8_STRING"), 8}}}};
    }
    void writeItems(const QList<PasteboardItem> &items) override
    {
        calls.push_back("writeItems " + std::to_string(items.size()));
        content = items;
    }
    QFuture<void> settled() override { return makeReadyFuture(); }
};

class FakeKeyEventPoster final : public KeyEventPoster {
public:
    explicit FakeKeyEventPoster(std::vector<std::string> &calls)
        : m_calls(calls)
    {
    }
    bool makesDown = true;
    std::vector<KeyEvent> posted;
    std::optional<KeyEvent> makeKeyboardEvent(quint16 keyCode, bool isDown) override
    {
        return isDown && !makesDown ? std::nullopt : std::optional(KeyEvent{keyCode, isDown, 0xff});
    }
    void post(const KeyEvent &event) override
    {
        posted.push_back(event);
        m_calls.emplace_back(event.isDown ? "key down" : "key up");
    }

private:
    std::vector<std::string> &m_calls;
};

} // namespace talmo::test
