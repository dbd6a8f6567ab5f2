#include "Input/AudioBuffer.h"

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
}

} // namespace talmo::test
