#pragma once

#include "App/Services/PipelineServices.h"
#include "Input/Audio/AudioBuffer.h"

#include <memory>

namespace talmo {

/// Regroups captured chunks of any size into buffers of one size. Not thread-safe: guarded by its owner's lock.
class AudioReblocker {
public:
    AudioReblocker(const AudioFormat &format, quint32 framesPerBlock, AudioBufferHandler handler);

    /// Appends whole frames; null means silence of that length. Calls the handler for every full block.
    void append(const char *samples, qsizetype byteCount);

    /// Delivers the incomplete block, then `silence` frames in separate buffers.
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
