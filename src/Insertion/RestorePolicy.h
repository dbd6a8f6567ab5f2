#pragma once

#include <QtGlobal>

#include <chrono>
#include <optional>

namespace talmo {

/// When what stood on the clipboard may stand there again: not before the program in front has read the text and has
/// been quiet for a while, and not at all while nobody has read it. Knows no desktop; whoever keeps the clipboard tells
/// it what happens and when.
class RestorePolicy {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Some programs read twice, some 20 ms apart; giving the clipboard back in between has brought one down.
    static constexpr std::chrono::milliseconds quietTime{120};
    /// A program that has not read the text by then may never do so.
    static constexpr std::chrono::milliseconds readTime{1500};

    enum class Verdict { Wait, Restore, GiveUp };

    /// The text stands on the clipboard and its shortcut is still to be posted.
    void begin();

    /// The shortcut was posted to this reader; without one, anybody's reading counts.
    void post(Time now, std::optional<quint32> reader);

    /// The program in front copies the clipboard by itself whenever that changes, and so never asks after the shortcut
    /// (a virtual machine, a remote desktop). What was read before counts, and it is given the whole time to paste.
    void postToImporter(Time now);

    /// Somebody has asked. `isData`: for the text itself, and it was given.
    void noteRequest(Time now, quint32 reader, bool isData);

    bool isPosted() const { return m_posted.has_value(); }
    /// The reader has the text.
    bool isRead() const { return m_isRead; }

    /// What may be done now. `isSending`: a large text is still on its way.
    Verdict verdict(Time now, bool isSending) const;
    /// When the verdict may be another one although nothing happens.
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
