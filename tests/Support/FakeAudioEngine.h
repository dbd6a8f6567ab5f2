#pragma once

#include "Base/Error.h"
#include "Input/Audio/AudioEngine.h"

#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace talmo::test {

/// A microphone that captures what the test supplies and records its calls.
class FakeAudioEngine final : public AudioEngine {
public:
    AudioFormat format{48000, 1, SampleType::Float32};
    std::exception_ptr tapFailure;
    std::exception_ptr startFailure;
    /// Called inside start() and stop().
    std::function<void()> onStart;
    std::function<void()> onStop;
    std::vector<std::string> calls;

    AudioFormat inputFormat() override
    {
        calls.emplace_back("inputFormat");
        return format;
    }
    void installTap(quint32 bufferSize, AudioBufferHandler handler) override
    {
        calls.push_back("installTap " + std::to_string(bufferSize));
        if (tapFailure) {
            std::rethrow_exception(tapFailure);
        }
        m_handler = std::move(handler);
    }
    void removeTap() override
    {
        calls.emplace_back("removeTap");
        m_handler = nullptr;
    }
    void prepare() override { calls.emplace_back("prepare"); }
    void start() override
    {
        calls.emplace_back("start");
        if (onStart) {
            onStart();
        }
        if (startFailure) {
            std::rethrow_exception(startFailure);
        }
    }
    void stop() override
    {
        calls.emplace_back("stop");
        if (onStop) {
            onStop();
        }
    }

    bool hasTap() const { return m_handler != nullptr; }
    void capture(const std::shared_ptr<const AudioBuffer> &buffer)
    {
        if (m_handler) {
            m_handler(buffer, AudioTime{});
        }
    }

private:
    AudioBufferHandler m_handler;
};

inline std::shared_ptr<AudioBuffer> silence(const AudioFormat &format, quint32 frames)
{
    auto buffer = AudioBuffer::make(format, frames);
    buffer->setFrameLength(frames);
    return buffer;
}

} // namespace talmo::test
