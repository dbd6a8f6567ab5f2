#pragma once

#include <QByteArray>

#include <deque>

namespace talmo {

/// Captured audio waiting for a recording to take it. Bounded: the oldest audio is dropped first. Not thread-safe.
class KeptAudio {
public:
    /// `mostBytes`: a whole number of frames.
    explicit KeptAudio(qsizetype mostBytes);

    /// Null means silence of that length.
    void append(const char *samples, qsizetype byteCount);
    qsizetype byteCount() const { return m_byteCount; }
    void clear();
    /// Returns everything kept, in order, and clears it.
    std::deque<QByteArray> take();

private:
    qsizetype m_mostBytes;
    qsizetype m_byteCount = 0;
    std::deque<QByteArray> m_pieces;
};

} // namespace talmo
