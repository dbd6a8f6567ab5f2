#include "App/SoundCues.h"

#include "Support/FakeDictationOptions.h"
#include "Support/Printing.h"
#include "Support/RecordingWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class FakePlayer final : public CuePlayer {
public:
    std::vector<SoundCue> cues;
    void play(SoundCue cue) override { cues.push_back(cue); }
};

class SoundCuesTest : public testing::Test {
protected:
    SoundCuesTest()
    {
        options->values[DictationOption::Sounds] = true;
        new SoundCues(options, player, *world.coordinator); // The coordinator is its parent.
    }
    ~SoundCuesTest() override { world.clock->advance(std::chrono::seconds(5)); }
    void begin()
    {
        world.coordinator->beginDictation();
        settle();
    }
    std::shared_ptr<FakeDictationOptions> options = std::make_shared<FakeDictationOptions>();
    std::shared_ptr<FakePlayer> player = std::make_shared<FakePlayer>();
    RecordingWorld world;
};

} // namespace

TEST_F(SoundCuesTest, recordingStartsAndEndsWithASound)
{
    begin();
    EXPECT_THAT(player->cues, ElementsAre(SoundCue::Start));
    world.onUpdate(u"hello"_s);
    settle();
    EXPECT_THAT(player->cues, ElementsAre(SoundCue::Start));
    world.coordinator->endDictation();
    settle();
    EXPECT_EQ(world.coordinator->state(), TalmoState::idle());
    EXPECT_THAT(player->cues, ElementsAre(SoundCue::Start, SoundCue::Stop));
}

TEST_F(SoundCuesTest, discardedRecordingEndsWithTheSameSound)
{
    begin();
    world.coordinator->cancelDictation();
    settle();
    EXPECT_THAT(player->cues, ElementsAre(SoundCue::Start, SoundCue::Stop));
}

TEST_F(SoundCuesTest, failureHasItsOwnSound)
{
    begin();
    world.onError(std::make_exception_ptr(Error(u"broken"_s)));
    settle();
    EXPECT_THAT(player->cues, ElementsAre(SoundCue::Start, SoundCue::Error));
}

TEST_F(SoundCuesTest, nothingIsPlayedWhileSwitchedOff)
{
    options->values[DictationOption::Sounds] = false;
    begin();
    EXPECT_THAT(player->cues, IsEmpty());
    options->values[DictationOption::Sounds] = true;
    world.coordinator->endDictation();
    settle();
    EXPECT_THAT(player->cues, ElementsAre(SoundCue::Stop));
}

} // namespace talmo::test
