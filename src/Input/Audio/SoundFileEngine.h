#pragma once

#include "Input/Audio/AudioEngine.h"
#include "Input/Audio/AudioReblocker.h"

#include <QString>

#include <memory>

namespace talmo {

/// A sound file in place of a microphone. Its owner delivers the audio, at any speed.
class SoundFileEngine final : public AudioEngine {
public:
    /// `path`: any format that libsndfile can read. Throws Error.
    explicit SoundFileEngine(const QString &path);
    ~SoundFileEngine() override;

    AudioFormat inputFormat() override;
    void installTap(quint32 bufferSize, AudioBufferHandler handler) override;
    void removeTap() override;
    void prepare() override {}
    void start() override {}
    void stop() override {}

    /// Delivers the next buffer to the tap, on the calling thread; false at the end of the file. Between start() and
    /// stop().
    bool deliverNext();

private:
    struct File;

    std::unique_ptr<File> m_file;
    quint32 m_bufferSize = 0;
    std::unique_ptr<AudioReblocker> m_blocks;
};

} // namespace talmo
