#pragma once

#include "Input/AudioEngine.h"
#include "Platform/Linux/PulseCapture.h"

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace talmo {

/// The microphone of a PulseAudio server, or of PipeWire's stand-in for one.
///
/// The handler runs on the connection's thread; the last buffers are handed over on the thread that removes the tap,
/// never at the same time.
class PulseAudioEngine final : public AudioEngine {
public:
    ~PulseAudioEngine() override;

    AudioFormat inputFormat() override;
    void installTap(quint32 bufferSize, AudioBufferHandler handler) override;
    void removeTap() override;
    void prepare() override;
    void start() override;
    void stop() override;

    /// Makes a stream ahead of a start that may come, so that the start costs next to nothing. Same thread as start();
    /// fails silently, since the start will tell.
    void warmUp();
    /// Lets a stream go that was made ahead and not used.
    void coolDown();

    /// The microphone that was asked about last; empty before. Any thread.
    QString sourceName() const;

    /// Whether the server refused Talmo the last time it was asked. Any thread.
    bool isAccessRefused() const { return m_isAccessRefused; }
    /// Called, on the thread that asked the server, when that has changed. Set before the first use.
    void setOnAccessChanged(std::function<void()> callback) { m_onAccessChanged = std::move(callback); }

private:
    void noteAccess(bool isRefused);
    std::shared_ptr<PulseConnection> ensureConnection(PulseConnection::Deadline deadline);
    std::unique_ptr<PulseCapture> openCapture(PulseConnection::Deadline deadline);

    /// Guards the pointers. Never held while the server is asked, since a stop on the main thread takes it.
    mutable std::mutex m_mutex;
    std::shared_ptr<PulseConnection> m_connection;
    std::unique_ptr<PulseCapture> m_capture;
    std::unique_ptr<FrameBlocks> m_blocks;
    PulseSource m_source;
    std::atomic<bool> m_isAccessRefused = false;
    std::function<void()> m_onAccessChanged;
};

} // namespace talmo
