#include "Input/Audio/SpeexAudioConverter.h"

#include "Speech/FormatConversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>

namespace talmo::test {

namespace {

const AudioFormat target{16000, 1, SampleType::Int16};

std::shared_ptr<AudioBuffer> tone(const AudioFormat &format, quint32 frames, double frequency, quint64 offset)
{
    auto buffer = AudioBuffer::make(format, frames);
    buffer->setFrameLength(frames);
    for (quint32 frame = 0; frame < frames; ++frame) {
        const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(offset + frame) / format.sampleRate;
        const auto sample = static_cast<float>(0.5 * std::sin(phase));
        for (quint32 channel = 0; channel < format.channelCount; ++channel) {
            std::memcpy(buffer->data() + (frame * format.channelCount + channel) * sizeof(float), &sample,
                        sizeof(sample));
        }
    }
    return buffer;
}

/// A tone sent through the whole conversion path in buffers of this size.
std::vector<double> converted(const AudioFormat &from, quint32 bufferSize, int buffers, double frequency)
{
    const auto converter = SpeexAudioConverterFactory().make(from, target);
    std::vector<double> samples;
    for (int index = 0; index < buffers; ++index) {
        const auto input = tone(from, bufferSize, frequency, static_cast<quint64>(index) * bufferSize);
        const auto output = convertBuffer(input, *converter, target);
        for (quint32 frame = 0; output && frame < output->frameLength(); ++frame) {
            qint16 sample = 0;
            std::memcpy(&sample, output->data() + frame * sizeof(sample), sizeof(sample));
            samples.push_back(sample / 32768.0);
        }
    }
    return samples;
}

double loudness(const std::vector<double> &samples, std::size_t from)
{
    double sum = 0;
    for (std::size_t index = from; index < samples.size(); ++index) {
        sum += samples[index] * samples[index];
    }
    return std::sqrt(sum / static_cast<double>(samples.size() - from));
}

} // namespace

TEST(SpeexAudioConverter, keepsStateBetweenBuffers)
{
    // Any buffer size yields the same result, without clicks between buffers.
    const auto whole = converted({48000, 1, SampleType::Float32}, 48000, 1, 440);
    const auto pieces = converted({48000, 1, SampleType::Float32}, 480, 100, 440);
    ASSERT_EQ(whole.size(), pieces.size());
    for (std::size_t index = 0; index < whole.size(); ++index) {
        ASSERT_NEAR(whole[index], pieces[index], 2.0 / 32768) << index;
    }
    EXPECT_NEAR(static_cast<double>(whole.size()), 16000, 100);
}

TEST(SpeexAudioConverter, keepsLoudnessAndMixesAllChannels)
{
    for (const quint32 channels : {1U, 2U, 8U}) {
        const auto samples = converted({44100, channels, SampleType::Float32}, 2048, 20, 440);
        EXPECT_NEAR(loudness(samples, 1000), 0.5 / std::numbers::sqrt2, 0.005) << channels;
    }
}

TEST(SpeexAudioConverter, removesFrequenciesAboveTargetRate)
{
    EXPECT_LT(loudness(converted({48000, 1, SampleType::Float32}, 2048, 20, 12000), 1000), 0.001);
}

TEST(SpeexAudioConverter, handlesHighRatesAndRejectsAbsurdOnes)
{
    EXPECT_GT(converted({192000, 2, SampleType::Float32}, 2048, 20, 440).size(), 3000U);
    const SpeexAudioConverterFactory factory;
    EXPECT_FALSE(factory.make({0, 1, SampleType::Float32}, target));
    EXPECT_FALSE(factory.make({1, 1, SampleType::Float32}, target));
    EXPECT_FALSE(factory.make({48000, 0, SampleType::Float32}, target));
    EXPECT_FALSE(factory.make({std::numeric_limits<double>::quiet_NaN(), 1, SampleType::Float32}, target));
    EXPECT_FALSE(factory.make({1e12, 1, SampleType::Float32}, target));
}

TEST(SpeexAudioConverter, turnsNaNIntoSilence)
{
    const AudioFormat from{16000, 1, SampleType::Float32};
    const auto converter = SpeexAudioConverterFactory().make(from, target);
    auto input = AudioBuffer::make(from, 100);
    input->setFrameLength(100);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (int index = 0; index < 100; ++index) {
        std::memcpy(input->data() + index * 4, &nan, sizeof(nan));
    }
    const auto output = convertBuffer(input, *converter, target);
    ASSERT_TRUE(output);
    for (quint32 frame = 0; frame < output->frameLength(); ++frame) {
        qint16 sample = 1;
        std::memcpy(&sample, output->data() + frame * 2, sizeof(sample));
        EXPECT_EQ(sample, 0);
    }
}

TEST(SpeexAudioConverter, sumsOfHugeSamplesStayFinite)
{
    const AudioFormat from{16000, 2, SampleType::Float32};
    const AudioFormat heard{16000, 1, SampleType::Float32};
    const auto converter = SpeexAudioConverterFactory().make(from, heard);
    auto input = AudioBuffer::make(from, 400);
    input->setFrameLength(400);
    const float huge = std::numeric_limits<float>::max();
    for (int index = 0; index < 800; ++index) {
        std::memcpy(input->data() + index * 4, &huge, sizeof(huge));
    }
    const auto output = convertBuffer(input, *converter, heard);
    ASSERT_TRUE(output);
    ASSERT_GT(output->frameLength(), 0U);
    for (quint32 frame = 0; frame < output->frameLength(); ++frame) {
        float sample = 0;
        std::memcpy(&sample, output->data() + frame * sizeof(sample), sizeof(sample));
        ASSERT_TRUE(std::isfinite(sample)) << frame;
    }
}

TEST(SpeexAudioConverter, reportsFormatChange)
{
    const auto converter = SpeexAudioConverterFactory().make({48000, 1, SampleType::Float32}, target);
    EXPECT_FALSE(convertBuffer(tone({44100, 2, SampleType::Float32}, 100, 440, 0), *converter, target));
    EXPECT_TRUE(convertBuffer(tone({48000, 1, SampleType::Float32}, 100, 440, 0), *converter, target));
}

} // namespace talmo::test
