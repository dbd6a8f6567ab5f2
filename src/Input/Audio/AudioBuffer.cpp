#include "Input/Audio/AudioBuffer.h"

#include <algorithm>
#include <new>
#include <utility>

namespace talmo {

namespace {

/// In bytes: far larger than any real buffer, but small enough not to exhaust the machine's memory.
constexpr quint64 largestBuffer = quint64(1) << 30;

} // namespace

std::shared_ptr<AudioBuffer> AudioBuffer::make(const AudioFormat &format, quint32 frameCapacity)
{
    if (format.bytesPerFrame() <= 0 ||
        quint64(frameCapacity) > largestBuffer / static_cast<quint64>(format.bytesPerFrame())) {
        return nullptr;
    }
    try {
        QByteArray samples(static_cast<qsizetype>(frameCapacity) * format.bytesPerFrame(), '\0');
        return std::shared_ptr<AudioBuffer>(new AudioBuffer(format, frameCapacity, std::move(samples)));
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

AudioBuffer::AudioBuffer(const AudioFormat &format, quint32 frameCapacity, QByteArray samples)
    : m_format(format),
      m_frameCapacity(frameCapacity),
      m_samples(std::move(samples))
{
}

void AudioBuffer::setFrameLength(quint32 frames)
{
    m_frameLength = std::min(frames, m_frameCapacity);
}

} // namespace talmo
