#include "AllocationCount.h"
#include "Benchmarks.h"

#include "Input/Audio/AudioRecorder.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Speech/FormatConversion.h"

#include <cmath>

namespace talmo::benchmarks {

void measureAudio(Figures &figures)
{
    constexpr int buffers = 2000;
    constexpr AudioFormat microphone{48000, 2, SampleType::Float32};
    constexpr AudioFormat recogniser{16000, 1, SampleType::Int16};
    LazyAudioConverterBox box{std::make_shared<SpeexAudioConverterFactory>(), recogniser, nullptr};
    const auto [stream, continuation] = AsyncStream<AnalyzerInput>::make();
    for (int number = 0; number < buffers; ++number) {
        const auto buffer = AudioBuffer::make(microphone, AudioRecorder::bufferSize);
        buffer->setFrameLength(AudioRecorder::bufferSize);
        auto *samples = reinterpret_cast<float *>(buffer->data()); // NOLINT: the format is Float32.
        for (quint32 sample = 0; sample < 2 * AudioRecorder::bufferSize; ++sample) {
            samples[sample] = std::sin(static_cast<float>(sample) / 50);
        }
        const auto allocationsBefore = testbed::allocationCount();
        const Time before = std::chrono::steady_clock::now();
        handleTapBuffer(box, continuation, buffer);
        figures.row(QStringLiteral("tap handler, 2048 stereo frames at 48 kHz"))
            .add(before, std::chrono::steady_clock::now());
        figures.row(QStringLiteral("  its allocations"), QString())
            .add(static_cast<double>(testbed::allocationCount() - allocationsBefore));
        stream.next([](const auto &, const auto &) {});
    }
}

} // namespace talmo::benchmarks
