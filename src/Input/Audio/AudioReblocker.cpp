#include "Input/Audio/AudioReblocker.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace talmo {

AudioReblocker::AudioReblocker(const AudioFormat &format, quint32 framesPerBlock, AudioBufferHandler handler)
    : m_format(format),
      m_framesPerBlock(framesPerBlock),
      m_handler(std::move(handler))
{
}

void AudioReblocker::append(const char *samples, qsizetype byteCount)
{
    const qsizetype frameSize = m_format.bytesPerFrame();
    auto frames = static_cast<quint64>(byteCount / frameSize);
    m_frameCount += frames;
    while (frames > 0) {
        if (!m_block) {
            m_block = AudioBuffer::make(m_format, m_framesPerBlock);
            if (!m_block) {
                return;
            }
        }
        const quint32 filled = m_block->frameLength();
        const auto count = static_cast<quint32>(std::min<quint64>(frames, m_framesPerBlock - filled));
        const auto bytes = static_cast<std::size_t>(count) * static_cast<std::size_t>(frameSize);
        if (samples != nullptr) {
            std::memcpy(m_block->data() + filled * frameSize, samples, bytes);
            samples += bytes;
        } // New buffers are zero-filled.
        m_block->setFrameLength(filled + count);
        frames -= count;
        if (m_block->frameLength() == m_framesPerBlock) {
            handOn();
        }
    }
}

void AudioReblocker::flush(quint32 silence)
{
    if (m_block) {
        handOn();
    }
    append(nullptr, static_cast<qsizetype>(silence) * m_format.bytesPerFrame());
    if (m_block) {
        handOn();
    }
}

void AudioReblocker::handOn()
{
    const std::shared_ptr<const AudioBuffer> full = std::exchange(m_block, nullptr);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    m_handler(full, AudioTime{std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()});
}

} // namespace talmo
