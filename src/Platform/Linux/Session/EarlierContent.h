#pragma once

#include "Insertion/Pasteboard.h"

#include <QTimer>

#include <atomic>
#include <functional>
#include <optional>

namespace talmo {

/// The clipboard's content that was replaced by a text no program has read. It is kept until the text is read after
/// all, or the user asks for it. The session's thread only, except where noted.
class EarlierContent {
public:
    using Content = QList<PasteboardRepresentation>;

    /// If the reader is unknown, the time runs from the first request rather than the last, so that a program that
    /// reads repeatedly cannot keep the text alive.
    enum class Moment { AfterLastRequest, AfterFirstRequest };

    /// `onTextRead` is called once the text has been read after all and the moment in which its reader may ask for more
    /// is over.
    explicit EarlierContent(std::function<void()> onTextRead, Moment moment = Moment::AfterLastRequest);

    /// Any thread.
    bool isHeld() const { return m_isHeld.load(); }
    const std::optional<Content> &content() const { return m_content; }
    void keep(std::optional<Content> content);
    void drop() { keep(std::nullopt); }

    /// Call at each request for the text from the window that it was meant for; `wasRead`: its data has been sent.
    void noteRequest(bool wasRead);
    /// Such requests no longer count.
    void forgetRequests();

private:
    std::function<void()> m_onTextRead;
    Moment m_moment;
    std::optional<Content> m_content;
    std::atomic<bool> m_isHeld = false;
    bool m_wasTextRead = false;
    QTimer m_timer;
};

} // namespace talmo
