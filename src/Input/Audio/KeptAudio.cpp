#include "Input/Audio/KeptAudio.h"

#include <utility>

namespace talmo {

KeptAudio::KeptAudio(qsizetype mostBytes)
    : m_mostBytes(mostBytes)
{
}

void KeptAudio::append(const char *samples, qsizetype byteCount)
{
    m_pieces.push_back(samples != nullptr ? QByteArray(samples, byteCount) : QByteArray(byteCount, '\0'));
    m_byteCount += byteCount;
    while (m_byteCount > m_mostBytes) {
        const qsizetype excess = m_byteCount - m_mostBytes;
        QByteArray &oldest = m_pieces.front();
        if (oldest.size() > excess) {
            oldest.remove(0, excess);
            m_byteCount -= excess;
        } else {
            m_byteCount -= oldest.size();
            m_pieces.pop_front();
        }
    }
}

void KeptAudio::clear()
{
    m_pieces.clear();
    m_byteCount = 0;
}

std::deque<QByteArray> KeptAudio::take()
{
    m_byteCount = 0;
    return std::exchange(m_pieces, {});
}

} // namespace talmo
