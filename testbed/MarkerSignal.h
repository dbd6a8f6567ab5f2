#pragma once

#include "Platform/Linux/Sound/PulseConnection.h"

#include <QtGlobal>

#include <memory>
#include <optional>

namespace talmo::testbed {

/// A sound whose every sample says which one it is, so that a recording shows exactly which moments it has. Played into
/// the microphone of a SoundServer from construction to destruction, for 80 seconds at most.
class MarkerSignal {
public:
    static constexpr int framesPerSecond = 48000;

    /// Returns once the microphone hears it. Throws Error.
    MarkerSignal();
    ~MarkerSignal();
    MarkerSignal(const MarkerSignal &) = delete;
    MarkerSignal &operator=(const MarkerSignal &) = delete;

    /// The frame that is heard at this moment.
    qint64 frameNow();
    /// The frame that a captured sample belongs to; nullopt for silence.
    static std::optional<qint64> frameOf(float sample);
    /// Whether the machine was too slow to play it without a gap.
    bool hasGaps() const;

private:
    void play();
    void listen();
    void write(std::size_t byteCount);

    std::unique_ptr<PulseConnection> m_connection;
    pa_stream *m_playback = nullptr;
    pa_stream *m_listener = nullptr;
    // Guarded by the connection's lock.
    qint64 m_written = 0;
    bool m_hasGaps = false;
};

} // namespace talmo::testbed
