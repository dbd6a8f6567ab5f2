#pragma once

#include "Base/Error.h"
#include "Input/Audio/AudioBuffer.h"

#include <pulse/pulseaudio.h>

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace talmo {

/// The sound server does not let Talmo in.
class SoundAccessRefused : public Error {
public:
    using Error::Error;
};

/// The microphone as the sound server describes it.
struct PulseSource {
    QByteArray name;
    AudioFormat format; ///< 0 channels where there is no microphone.
};

/// A connection to the sound server, with the thread that serves it. Waits are bounded: a server that stops answering
/// gives an error, never a hang. Not for use from its own thread.
class PulseConnection {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    /// Holds the lock of the connection's thread: nothing of the connection's runs meanwhile.
    class Lock {
    public:
        explicit Lock(pa_threaded_mainloop *loop)
            : m_loop(loop)
        {
            pa_threaded_mainloop_lock(m_loop);
        }
        ~Lock() { pa_threaded_mainloop_unlock(m_loop); }
        Lock(const Lock &) = delete;
        Lock &operator=(const Lock &) = delete;

    private:
        pa_threaded_mainloop *m_loop;
    };

    /// Throws Error when no server answers in time.
    static std::unique_ptr<PulseConnection> open(Deadline deadline);
    ~PulseConnection();
    PulseConnection(const PulseConnection &) = delete;
    PulseConnection &operator=(const PulseConnection &) = delete;

    bool isAlive() const;
    /// The default source, unless it only listens to what the machine itself plays. Throws Error.
    PulseSource defaultSource(Deadline deadline);

    pa_threaded_mainloop *loop() const { return m_loop; }
    pa_context *context() const { return m_context; }
    void wake() { pa_threaded_mainloop_signal(m_loop, 0); }

    /// With the lock held: waits until `isDone` says so; false when the deadline came first. Whatever may change the
    /// answer calls wake().
    bool waitUntil(Deadline deadline, const std::function<bool()> &isDone);
    /// The server's last complaint.
    QString errorText() const;

private:
    PulseConnection();

    pa_threaded_mainloop *m_loop;
    pa_context *m_context = nullptr;
};

} // namespace talmo
