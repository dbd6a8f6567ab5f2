#pragma once

#include "Base/Error.h"
#include "Input/Audio/AudioBuffer.h"

#include <pulse/pulseaudio.h>

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace talmo {

/// The sound server denies Talmo access.
class SoundAccessRefused : public Error {
public:
    using Error::Error;
};

/// The microphone as the sound server describes it.
struct PulseSource {
    QByteArray name;
    /// Its name in the desktop's mixer.
    QString title;
    AudioFormat format; ///< 0 channels if there is no microphone.
};

/// A connection to the sound server, with the thread that serves it. All waits have a timeout: a server that stops
/// responding causes an error, never a hang. Not for use on its own thread.
class PulseConnection {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    /// Holds the connection's lock, which keeps its thread from running callbacks.
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

    /// Throws Error if no server responds in time.
    static std::unique_ptr<PulseConnection> open(Deadline deadline);
    ~PulseConnection();
    PulseConnection(const PulseConnection &) = delete;
    PulseConnection &operator=(const PulseConnection &) = delete;

    bool isAlive() const;
    /// The default source, unless it is a monitor of the machine's own output. Throws Error.
    PulseSource defaultSource(Deadline deadline);
    /// Without channels if there is no such source. Throws Error.
    PulseSource sourceNamed(const QByteArray &name, Deadline deadline);

    pa_threaded_mainloop *loop() const { return m_loop; }
    pa_context *context() const { return m_context; }
    void wake() { pa_threaded_mainloop_signal(m_loop, 0); }

    /// Call with the lock held. Waits until `isDone` returns true; returns false if the deadline passes first. Whatever
    /// may change the result calls wake().
    bool waitUntil(Deadline deadline, const std::function<bool()> &isDone);
    /// The server's last error.
    QString errorText() const;

private:
    PulseConnection();
    PulseSource querySource(const char *name, Deadline deadline);

    pa_threaded_mainloop *m_loop;
    pa_context *m_context = nullptr;
};

} // namespace talmo
