#pragma once

#include "Base/Clock.h"

#include <QString>

#include <array>
#include <memory>
#include <mutex>
#include <optional>

namespace talmo {

/// When the last dictation reached each of its stages. Ten readings of the clock per dictation, so it is always on. Any
/// thread.
class DictationTrace {
public:
    /// In the order in which a dictation reaches them.
    enum class Stage {
        Pressed,
        Recording,
        Released,
        LastAudio,
        FinalText,
        Cleaned,
        ClipboardClaimed,
        Chord,
        Read,
        Restored,
    };

    explicit DictationTrace(std::shared_ptr<Clock> clock);

    /// Counts only if the dictation has reached the stage before, so that a tap, or an insertion without a dictation,
    /// leaves the last trace as it is. A press counts once it has led to a recording.
    void note(Stage stage);

    /// A line per stage reached: its name, milliseconds since the first one, and since the one before. Nullopt before
    /// the first dictation.
    std::optional<QString> table() const;

private:
    static constexpr std::size_t stageCount = static_cast<std::size_t>(Stage::Restored) + 1;

    std::shared_ptr<Clock> m_clock;
    mutable std::mutex m_mutex;
    std::optional<Instant> m_pressed; ///< Not yet a recording.
    std::array<std::optional<Instant>, stageCount> m_times;
    std::size_t m_next = 0;
};

} // namespace talmo
