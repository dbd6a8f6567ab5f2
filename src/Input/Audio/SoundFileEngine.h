#pragma once

#include "Input/Audio/AudioEngine.h"
#include "Input/Audio/FrameBlocks.h"

#include <QString>

#include <memory>

namespace talmo {

/// A recording on disk in the place of a microphone: whoever made it hands out the sound, as fast as they like.
class SoundFileEngine final : public AudioEngine {
public:
    /// Anything that libsndfile can read. Throws Error.
    explicit SoundFileEngine(const QString &path);
    ~SoundFileEngine() override;

    AudioFormat inputFormat() override;
    void installTap(quint32 bufferSize, AudioBufferHandler handler) override;
    void removeTap() override;
    void prepare() override {}
    void start() override {}
    void stop() override {}

    /// Hands the next buffer's worth of sound to the tap, on the calling thread; false at the end of the file. Between
    /// start and stop.
    bool deliverNext();

private:
    struct File;

    std::unique_ptr<File> m_file;
    quint32 m_bufferSize = 0;
    std::unique_ptr<FrameBlocks> m_blocks;
};

} // namespace talmo
