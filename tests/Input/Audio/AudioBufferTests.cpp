#include "Input/Audio/AudioBuffer.h"

#include <gtest/gtest.h>

#include <limits>

namespace talmo::test {

TEST(AudioBuffer, holdsInterleavedFrames)
{
    const auto buffer = AudioBuffer::make({48000, 2, SampleType::Float32}, 100);
    ASSERT_TRUE(buffer);
    EXPECT_EQ(buffer->frameCapacity(), 100U);
    EXPECT_EQ(buffer->frameLength(), 0U);
    buffer->setFrameLength(50);
    EXPECT_EQ(buffer->byteLength(), 400);
    buffer->setFrameLength(101);
    EXPECT_EQ(buffer->frameLength(), 100U);
}

TEST(AudioBuffer, refusesAbsurdSizes)
{
    EXPECT_FALSE(AudioBuffer::make({48000, 8, SampleType::Float32}, std::numeric_limits<quint32>::max()));
    EXPECT_FALSE(AudioBuffer::make({48000, 0, SampleType::Float32}, 10));
    // The limit is one gigabyte for any format.
    EXPECT_FALSE(AudioBuffer::make({48000, 1, SampleType::Int16}, (1U << 29) + 1));
    EXPECT_FALSE(AudioBuffer::make({48000, 1U << 20, SampleType::Float32}, (1U << 8) + 1));
}

TEST(AudioBuffer, isSilentUntilFilled)
{
    const auto buffer = AudioBuffer::make({48000, 2, SampleType::Int16}, 3);
    ASSERT_TRUE(buffer);
    EXPECT_EQ(QByteArray(buffer->data(), 12), QByteArray(12, '\0'));
    EXPECT_EQ(AudioBuffer::make({48000, 1, SampleType::Int16}, 0)->byteLength(), 0);
}

} // namespace talmo::test
