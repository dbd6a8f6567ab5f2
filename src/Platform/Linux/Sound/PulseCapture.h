#pragma once

#include "Input/Audio/AudioReblocker.h"
#include "Input/Audio/KeptAudio.h"
#include "Platform/Linux/Sound/PulseConnection.h"

#include <chrono>
#include <functional>
#include <memory>

namespace talmo {

/// One recording stream, created corked. Its data is read on the connection's thread.
class PulseCapture {
public:
    /// Throws Error if the server refuses or times out.
    /// `isDefault`: the server decides which source that is, so that the desktop's mixer can move the stream for good.
    /// `onUnplugged` is called on the connection's thread if the source disappears.
    static std::unique_ptr<PulseCapture> open(std::shared_ptr<PulseConnection> connection, const PulseSource &source,
                                              bool isDefault, std::function<void()> onUnplugged,
                                              PulseConnection::Deadline deadline);
    ~PulseCapture();
    PulseCapture(const PulseCapture &) = delete;
    PulseCapture &operator=(const PulseCapture &) = delete;

    /// The most audio that is kept before a recording.
    static constexpr std::chrono::seconds longestKept{30};

    /// Keeps captured audio for begin(); continues after pauseKeeping(). Does not affect a running recording, nor do
    /// the next two.
    void keep();
    /// Pauses capturing until keep() or begin(); the kept audio stays.
    void pauseKeeping();
    /// Pauses capturing and discards the kept audio.
    void discardKept();

    /// Starts delivering captured audio, block by block; the kept audio is delivered within this call.
    void begin(std::unique_ptr<AudioReblocker> blocks);

    /// Delivers the audio captured until this call, followed by a little silence. Waits up to 30 ms for audio in
    /// flight. No block is delivered after this has returned.
    void end();

    bool isRunning() const;
    bool isAlive() const;
    /// Whether the stream is running, but the server has sent nothing for so long that it must be hanging.
    bool isStalled() const;
    /// Whether the source disappeared while the sound server went on.
    bool isUnplugged() const;

private:
    PulseCapture(std::shared_ptr<PulseConnection> connection, const PulseSource &source,
                 std::function<void()> onUnplugged);

    bool isReady() const;
    void connectStream(const PulseSource &source, bool isDefault);
    void stateChanged();
    void moved();
    void noteDevice();
    void noteUnplugged();
    void takeData();
    void cork(bool isCorked);
    quint64 framesUnderway() const;

    std::shared_ptr<PulseConnection> m_connection;
    AudioFormat m_format;
    std::function<void()> m_onUnplugged;
    // Guarded by the connection's lock.
    KeptAudio m_kept;
    pa_stream *m_stream = nullptr;
    std::unique_ptr<AudioReblocker> m_blocks;
    bool m_isKeeping = false;
    QByteArray m_device;
    pa_operation *m_deviceQuery = nullptr;
    bool m_isDeviceFound = false;
    bool m_isUnplugged = false;
    std::chrono::steady_clock::time_point m_lastData;
};

} // namespace talmo
