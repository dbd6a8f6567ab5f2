// What the capture thread allocates for each buffer. It is the one thread that must never wait, and every allocation
// may wait for a lock. Counted rather than timed, so that a busy machine changes nothing.

#include "AllocationCount.h"
#include "Input/Audio/AudioReblocker.h"
#include "Input/Audio/AudioRecorder.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Speech/FormatConversion.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace talmo::test {

namespace {

constexpr AudioFormat microphone{48000, 2, SampleType::Float32};
constexpr AudioFormat recogniser{16000, 1, SampleType::Int16};

/// From the samples of the sound server to the queue of the recogniser, per buffer of 2048 frames.
class TapAllocationsTest : public testing::Test {
protected:
    std::uint64_t allocationsForNextBuffer()
    {
        const auto before = testbed::allocationCount();
        blocks.append(samples.data(), static_cast<qsizetype>(samples.size()));
        const auto count = testbed::allocationCount() - before;
        stream.first.next([this](const auto &input, const auto &) { received += input ? 1 : 0; });
        return count;
    }

    std::vector<char> samples = std::vector<char>(AudioRecorder::bufferSize * std::size_t(microphone.bytesPerFrame()));
    LazyAudioConverterBox box{std::make_shared<SpeexAudioConverterFactory>(), recogniser, nullptr};
    std::pair<AsyncStream<AnalyzerInput>, AsyncStream<AnalyzerInput>::Continuation> stream =
        AsyncStream<AnalyzerInput>::make();
    AudioReblocker blocks{microphone, AudioRecorder::bufferSize,
                          [this](const auto &buffer, const auto &) { handleTapBuffer(box, stream.second, buffer); }};
    int received = 0;
};

} // namespace

TEST_F(TapAllocationsTest, bufferCostsNoMoreAllocationsThanItNeeds)
{
    constexpr int buffers = 200;
    /// The block and the converted buffer, with their samples, and what holds both in the queue; now and then the queue
    /// grows by a piece.
    constexpr std::uint64_t expected = 6;
    allocationsForNextBuffer(); // The converter is made for the first one.
    std::vector<std::uint64_t> counts(buffers);
    std::generate(counts.begin(), counts.end(), [this] { return allocationsForNextBuffer(); });
    std::sort(counts.begin(), counts.end());
    RecordProperty("allocations", static_cast<int>(counts[buffers / 2]));
    EXPECT_EQ(received, buffers + 1);
    EXPECT_LE(counts[buffers / 2], expected);
    EXPECT_LE(counts.back(), expected + 1);
}

} // namespace talmo::test
