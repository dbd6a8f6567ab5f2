#pragma once

#include <QtGlobal>

#include <chrono>
#include <optional>

namespace talmo {

/// Decides when the previous clipboard content may be restored: not before the frontmost application has read the text
/// and has been quiet for a while, and not at all if nothing has read it. Independent of the desktop; the clipboard's
/// owner reports events and their times.
class RestorePolicy {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Some programs read twice, about 20 ms apart; restoring the clipboard in between has crashed one.
    static constexpr std::chrono::milliseconds quietTime{120};
    /// A program that has not read the text by then probably never will.
    static constexpr std::chrono::milliseconds readTime{1500};

    enum class Verdict { Wait, Restore, GiveUp };

    /// The text is on the clipboard; its shortcut has not been posted yet.
    void begin();

    /// The shortcut was posted to this reader; without one, a read by any program counts.
    void post(Time now, std::optional<quint32> reader);

    /// The frontmost application copies the clipboard whenever it changes, and so never reads it after the shortcut (a
    /// virtual machine, a remote desktop). Reads before the shortcut count, and it gets the whole `readTime` to paste.
    void postToImporter(Time now);

    /// A program has requested the clipboard. `isData`: it requested the text itself, and received it.
    void noteRequest(Time now, quint32 reader, bool isData);

    bool isPosted() const { return m_posted.has_value(); }
    /// The reader has the text.
    bool isRead() const { return m_isRead; }

    /// What may be done now. `isSending`: a large text is still being transferred.
    Verdict verdict(Time now, bool isSending) const;
    /// When the verdict may change without further events.
    Time nextLook(Time now) const;

private:
    std::optional<Time> m_posted;
    std::optional<quint32> m_reader;
    bool m_isImporter = false;
    bool m_isRead = false;
    bool m_wasReadBefore = false;
    Time m_lastRequest;
};

} // namespace talmo
