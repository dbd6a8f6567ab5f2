#pragma once

#include "App/Services/PipelineServices.h"
#include "Input/Audio/AudioBuffer.h"

#include <memory>

namespace talmo {

/// Puts captured chunks of any size together into buffers of one size. Not thread-safe: its owner's lock guards it.
class FrameBlocks {
public:
    FrameBlocks(const AudioFormat &format, quint32 framesPerBlock, AudioBufferHandler handler);

    /// Appends whole frames; null stands for silence of that length. Calls the handler for every block that is full.
    void append(const char *samples, qsizetype byteCount);

    /// Hands on the block that was begun, and `silence` frames behind it as buffers of their own.
    void flush(quint32 silence);

    quint64 frameCount() const { return m_frameCount; }

private:
    void handOn();

    AudioFormat m_format;
    quint32 m_framesPerBlock;
    AudioBufferHandler m_handler;
    std::shared_ptr<AudioBuffer> m_block;
    quint64 m_frameCount = 0;
};

} // namespace talmo
