#pragma once

#include <QByteArray>

#include <deque>

namespace talmo {

/// Captured sound that waits for a recording to take it. Bounded: of more than that, the newest stays. Not thread-safe.
class KeptAudio {
public:
    /// `mostBytes`: whole frames.
    explicit KeptAudio(qsizetype mostBytes);

    /// Null stands for silence of that length.
    void append(const char *samples, qsizetype byteCount);
    qsizetype byteCount() const { return m_byteCount; }
    void clear();
    /// What is kept, in order; afterwards nothing is.
    std::deque<QByteArray> take();

private:
    qsizetype m_mostBytes;
    qsizetype m_byteCount = 0;
    std::deque<QByteArray> m_pieces;
};

} // namespace talmo
