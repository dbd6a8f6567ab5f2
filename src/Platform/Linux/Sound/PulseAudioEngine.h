#pragma once

#include "Input/Audio/AudioEngine.h"
#include "Input/Audio/MicrophoneReport.h"
#include "Platform/Linux/Sound/PulseCapture.h"

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace talmo {

/// The microphone of a PulseAudio server, or of PipeWire's replacement for it.
///
/// The tap's handler runs on the connection's thread. Audio that was kept before the start is delivered on the thread
/// that starts, and the last buffers on the thread that removes the tap; these calls never overlap.
class PulseAudioEngine final : public AudioEngine, public MicrophoneReporter {
public:
    ~PulseAudioEngine() override;

    AudioFormat inputFormat() override;
    void installTap(quint32 bufferSize, AudioBufferHandler handler) override;
    void removeTap() override;
    void prepare() override;
    void start() override;
    void stop() override;

    /// Prepares a stream for a possible start, so that the start costs next to nothing, and keeps the audio captured
    /// until then for the tap. Call this and the next four on the thread of start(). Fails silently, since start()
    /// reports the error. None of them affects a running recording.
    void warmUp();
    /// Pauses capturing but keeps the audio so far; resumeKeeping() continues.
    void pauseKeeping();
    void resumeKeeping();
    /// Discards the kept audio but not the stream.
    void discardKept();
    /// Closes a prepared stream that was not used.
    void coolDown();

    /// The source to record from; empty for the server's default, which also stands in for one that is not connected.
    /// Takes effect with the next recording. Any thread.
    void chooseMicrophone(const QString &name);
    /// On the last recording, or the failed attempt at one. Any thread.
    MicrophoneReport report() const override;

    /// Set these before first use. Called on any thread; the second one when the chosen microphone is first found to be
    /// missing, and when it is connected again.
    void setOnUnplugged(std::function<void()> callback) { m_onUnplugged = std::move(callback); }
    void setOnChosenMissing(std::function<void(bool isMissing)> callback) { m_onChosenMissing = std::move(callback); }

    /// The name of the last queried microphone; empty before the first query. Any thread.
    QString sourceName() const;

    /// Asks the server whether it grants Talmo access, within half a second; false if it refuses. Same thread as
    /// start().
    bool askForAccess();
    /// Whether the server refused access the last time it was asked. Any thread.
    bool isAccessRefused() const { return m_isAccessRefused; }
    /// Called when that changes, on the thread that asked the server. Set before first use.
    void setOnAccessChanged(std::function<void()> callback) { m_onAccessChanged = std::move(callback); }

private:
    /// What a recording has captured so far.
    struct Heard {
        std::atomic<quint64> frames = 0;
        std::atomic<bool> hasSound = false;
    };

    void noteAccess(bool isRefused);
    std::shared_ptr<PulseConnection> ensureConnection(PulseConnection::Deadline deadline);
    bool keepAnew();
    std::unique_ptr<PulseCapture> openCapture(PulseConnection::Deadline deadline);
    PulseSource querySource(PulseConnection::Deadline deadline);
    void noteChosenMissing(bool isMissing);

    /// Guards the pointers. Never held while waiting for the server, since a stop on the main thread takes it.
    mutable std::mutex m_mutex;
    std::shared_ptr<PulseConnection> m_connection;
    std::unique_ptr<PulseCapture> m_capture;
    std::unique_ptr<AudioReblocker> m_blocks;
    PulseSource m_source;
    QByteArray m_chosen;
    bool m_isDefault = true;
    MicrophoneReport m_report;
    std::shared_ptr<Heard> m_heard; ///< In the recording under way.
    std::atomic<bool> m_isChosenMissing = false;
    std::atomic<bool> m_isAccessRefused = false;
    std::function<void()> m_onAccessChanged;
    std::function<void()> m_onUnplugged;
    std::function<void(bool)> m_onChosenMissing;
};

} // namespace talmo
