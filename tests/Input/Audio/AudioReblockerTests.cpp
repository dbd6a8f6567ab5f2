#include "Input/Audio/AudioReblocker.h"

#include <gmock/gmock.h>

#include <cstring>
#include <numeric>
#include <vector>

namespace talmo::test {

namespace {

class AudioReblockerTest : public testing::Test {
protected:
    void append(std::size_t frames)
    {
        std::vector<float> samples(frames);
        std::iota(samples.begin(), samples.end(), next);
        next += static_cast<float>(frames);
        blocks.append(reinterpret_cast<const char *>(samples.data()), static_cast<qsizetype>(frames * sizeof(float)));
    }
    float next = 1;
    std::vector<quint32> lengths;
    std::vector<float> received;
    AudioReblocker blocks{{48000, 1, SampleType::Float32}, 2048, [this](const auto &buffer, const AudioTime &) {
                              lengths.push_back(buffer->frameLength());
                              std::vector<float> samples(buffer->frameLength());
                              std::memcpy(samples.data(), buffer->data(), samples.size() * sizeof(float));
                              received.insert(received.end(), samples.begin(), samples.end());
                          }};
};

} // namespace

TEST_F(AudioReblockerTest, joinsChunksOfAnySize)
{
    for (const std::size_t frames : {14U, 2000U, 1U, 2048U, 5000U, 0U}) {
        append(frames);
    }
    blocks.flush(0);
    EXPECT_THAT(lengths, testing::ElementsAre(2048, 2048, 2048, 2048, 871));
    std::vector<float> expected(9063);
    std::iota(expected.begin(), expected.end(), 1.0F);
    EXPECT_EQ(received, expected);
    EXPECT_EQ(blocks.frameCount(), 9063U);
}

TEST_F(AudioReblockerTest, flushEmitsPartialBlockThenSilence)
{
    append(3);
    blocks.flush(2);
    EXPECT_THAT(lengths, testing::ElementsAre(3, 2));
    EXPECT_THAT(received, testing::ElementsAre(1, 2, 3, 0, 0));
}

TEST_F(AudioReblockerTest, gapIsSilence)
{
    append(1);
    blocks.append(nullptr, 8);
    append(1);
    blocks.flush(0);
    EXPECT_THAT(received, testing::ElementsAre(1, 0, 0, 2));
}

} // namespace talmo::test
