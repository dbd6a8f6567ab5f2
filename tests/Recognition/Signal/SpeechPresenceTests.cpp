#include "Recognition/Signal/SpeechPresence.h"

#include "Base/Error.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

/// Takes loud windows for speech, and breaks over the loudest.
class Loudness final : public VoiceActivity {
public:
    bool isSpeech(std::span<const float> samples) override
    {
        EXPECT_EQ(samples.size(), window);
        if (samples.front() > 0.9F) {
            throw Error(u"broken"_s);
        }
        return samples.front() > 0.1F;
    }
    void reset() override {}
};

constexpr std::int16_t loud = 8000;
constexpr std::int16_t loudest = 32000;

std::vector<std::int16_t> windows(std::size_t count, std::int16_t sample)
{
    return std::vector<std::int16_t>(count * VoiceActivity::window, sample);
}

} // namespace

TEST(SpeechPresence, isSpeechAfterTenthOfSecond)
{
    SpeechPresence presence(std::make_shared<Loudness>());
    presence.add(windows(20, 0));
    EXPECT_FALSE(presence.isSpeech());
    presence.add(windows(3, loud));
    EXPECT_FALSE(presence.isSpeech());
    presence.add(windows(1, loud));
    EXPECT_TRUE(presence.isSpeech());
    presence.add(windows(100, 0));
    EXPECT_TRUE(presence.isSpeech());
    presence.clear();
    EXPECT_FALSE(presence.isSpeech());
}

TEST(SpeechPresence, countsSoundInBlocksOfAnySize)
{
    SpeechPresence presence(std::make_shared<Loudness>());
    const auto sound = windows(4, loud);
    for (std::size_t start = 0; start < sound.size(); start += 100) {
        EXPECT_FALSE(presence.isSpeech());
        presence.add(std::span(sound).subspan(start, std::min<std::size_t>(100, sound.size() - start)));
    }
    EXPECT_TRUE(presence.isSpeech());
}

TEST(SpeechPresence, everythingIsSpeechWithoutDetectionOrAfterItFailed)
{
    EXPECT_TRUE(SpeechPresence(nullptr).isSpeech());
    SpeechPresence presence(std::make_shared<Loudness>());
    EXPECT_FALSE(presence.isSpeech());
    presence.add(windows(1, loudest));
    EXPECT_TRUE(presence.isSpeech());
    presence.add(windows(1, loudest));
    EXPECT_TRUE(presence.isSpeech());
}

} // namespace talmo::test
