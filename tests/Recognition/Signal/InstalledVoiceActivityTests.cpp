#include "Recognition/Signal/InstalledVoiceActivity.h"

#include "Base/Error.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class CountingActivity final : public VoiceActivity {
public:
    bool isSpeech(std::span<const float> /*samples*/) override { return true; }
    void reset() override { ++resets; }

    int resets = 0;
};

} // namespace

TEST(InstalledVoiceActivity, isLoadedOnceAndResetForEveryRecording)
{
    int loads = 0;
    InstalledVoiceActivity installed([&loads] {
        ++loads;
        return std::make_shared<CountingActivity>();
    });
    installed.forRecording();
    const auto second = installed.forRecording();
    EXPECT_EQ(loads, 1);
    EXPECT_EQ(dynamic_cast<const CountingActivity &>(*second).resets, 2);
    // A recording that is not over keeps its own.
    EXPECT_NE(installed.forRecording(), second);
    EXPECT_EQ(loads, 2);
}

TEST(InstalledVoiceActivity, isLookedForAgainAfterUnloading)
{
    bool isThere = false;
    InstalledVoiceActivity installed([&isThere] { return isThere ? std::make_shared<CountingActivity>() : nullptr; });
    EXPECT_EQ(installed.forRecording(), nullptr);
    isThere = true;
    EXPECT_EQ(installed.forRecording(), nullptr);
    installed.unload();
    EXPECT_NE(installed.forRecording(), nullptr);
}

TEST(InstalledVoiceActivity, damagedOneIsNone)
{
    InstalledVoiceActivity installed([]() -> std::shared_ptr<VoiceActivity> { throw Error(u"damaged"_s); });
    EXPECT_EQ(installed.forRecording(), nullptr);
    EXPECT_EQ(InstalledVoiceActivity().forRecording(), nullptr);
}

} // namespace talmo::test
