#pragma once

#include "Input/Audio/FrameBlocks.h"
#include "Input/Audio/KeptAudio.h"
#include "Platform/Linux/Sound/PulseConnection.h"

#include <chrono>
#include <memory>

namespace talmo {

/// One recording stream, made corked. Its data is taken on the connection's thread.
class PulseCapture {
public:
    /// Throws Error when the server refuses or does not answer in time.
    static std::unique_ptr<PulseCapture> open(std::shared_ptr<PulseConnection> connection, const PulseSource &source,
                                              PulseConnection::Deadline deadline);
    ~PulseCapture();
    PulseCapture(const PulseCapture &) = delete;
    PulseCapture &operator=(const PulseCapture &) = delete;

    /// The most that is kept ahead of a recording.
    static constexpr std::chrono::seconds longestKept{30};

    /// Keeps what is captured, for begin(); goes on after pauseKeeping(). Nothing of this touches a recording that
    /// runs.
    void keep();
    /// Captures no more until keep() or begin(); what is kept stays.
    void pauseKeeping();
    /// The same, and what is kept is thrown away.
    void discardKept();

    /// Begins to hand captured audio on, block by block: first what was kept, within this call.
    void begin(std::unique_ptr<FrameBlocks> blocks);

    /// Hands on what was captured until this call, with a little silence behind it. Waits 30 ms at most for what is
    /// still on its way. No block is handed on once this has returned.
    void end();

    bool isRunning() const;
    bool isAlive() const;
    /// Running, but the server has sent nothing for so long that it must be stuck.
    bool isStalled() const;

private:
    PulseCapture(std::shared_ptr<PulseConnection> connection, const PulseSource &source);

    bool isReady() const;
    void connectStream(const PulseSource &source);
    void takeData();
    void cork(bool isCorked);
    quint64 framesUnderway() const;

    std::shared_ptr<PulseConnection> m_connection;
    AudioFormat m_format;
    // Guarded by the connection's lock.
    KeptAudio m_kept;
    pa_stream *m_stream = nullptr;
    std::unique_ptr<FrameBlocks> m_blocks;
    bool m_isKeeping = false;
    std::chrono::steady_clock::time_point m_lastData;
};

} // namespace talmo
