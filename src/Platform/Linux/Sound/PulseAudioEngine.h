#pragma once

#include "Input/Audio/AudioEngine.h"
#include "Platform/Linux/Sound/PulseCapture.h"

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace talmo {

/// The microphone of a PulseAudio server, or of PipeWire's stand-in for one.
///
/// The handler runs on the connection's thread. What was kept ahead is handed over on the thread that starts, and the
/// last buffers on the one that removes the tap, never at the same time.
class PulseAudioEngine final : public AudioEngine {
public:
    ~PulseAudioEngine() override;

    AudioFormat inputFormat() override;
    void installTap(quint32 bufferSize, AudioBufferHandler handler) override;
    void removeTap() override;
    void prepare() override;
    void start() override;
    void stop() override;

    /// Makes a stream ahead of a start that may come, so that the start costs next to nothing, and keeps what is
    /// captured from now on: the tap gets that first. Same thread as start(), and so are the four below; fails
    /// silently, since the start will tell. None of them touches a recording that runs.
    void warmUp();
    /// Captures no more, but keeps what there is; goes on.
    void pauseKeeping();
    void resumeKeeping();
    /// Throws away what was kept; the stream stays.
    void discardKept();
    /// Lets a stream go that was made ahead and not used.
    void coolDown();

    /// The microphone that was asked about last; empty before. Any thread.
    QString sourceName() const;

    /// Asks the server, half a second at most, whether it lets Talmo in; false when it refuses. Same thread as start().
    bool askForAccess();
    /// Whether the server refused Talmo the last time it was asked. Any thread.
    bool isAccessRefused() const { return m_isAccessRefused; }
    /// Called, on the thread that asked the server, when that has changed. Set before the first use.
    void setOnAccessChanged(std::function<void()> callback) { m_onAccessChanged = std::move(callback); }

private:
    void noteAccess(bool isRefused);
    std::shared_ptr<PulseConnection> ensureConnection(PulseConnection::Deadline deadline);
    bool keepAnew();
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
