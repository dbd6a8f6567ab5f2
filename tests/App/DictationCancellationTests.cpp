#include "App/DictationCancellation.h"

#include "Support/FakeCancelKey.h"
#include "Support/GestureWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

class DictationCancellationTest : public testing::Test {
protected:
    DictationCancellationTest()
    {
        new DictationCancellation({key, on.notice, [this] { return on.manager->recognizer().activeMode(); },
                                   [this] { on.manager->endGesture(); }, [] { return u"Right Ctrl"_s; }},
                                  *on.world.coordinator); // The coordinator is its parent.
    }
    void pressEscape()
    {
        key->press();
        settle();
    }
    std::shared_ptr<FakeCancelKey> key = std::make_shared<FakeCancelKey>();
    GestureWorld on;
};

} // namespace

TEST_F(DictationCancellationTest, holdsTheKeyOnlyWhileRecording)
{
    EXPECT_FALSE(key->isGrabbed());
    on.hold();
    EXPECT_TRUE(key->isGrabbed());
    on.world.onUpdate(u"hello"_s);
    settle();
    EXPECT_EQ(key->grabs, 1);
    on.release();
    EXPECT_EQ(on.state(), TalmoState::processing());
    EXPECT_FALSE(key->isGrabbed());
}

TEST_F(DictationCancellationTest, pressDiscardsTheRecording)
{
    on.hold();
    on.world.takeCalls();
    pressEscape();
    EXPECT_EQ(on.state(), TalmoState::idle());
    EXPECT_THAT(on.world.calls, ElementsAre("recorder.stop", "overlay.hide", "cancelTranscription"));
    EXPECT_EQ(on.notice->farewell(), u"Cancelled"_s);
    EXPECT_FALSE(key->isGrabbed());
    on.release();
    EXPECT_EQ(on.state(), TalmoState::idle());
    EXPECT_EQ(on.count("stopTranscription"), 0);
}

TEST_F(DictationCancellationTest, nextHoldAfterDiscardRecords)
{
    on.hold();
    pressEscape();
    on.release();
    on.pause();
    on.hold();
    EXPECT_EQ(on.state(), TalmoState::recording());
}

TEST_F(DictationCancellationTest, firstGestureAfterDiscardedHandsFreeRecordingRecords)
{
    on.doubleTap();
    ASSERT_EQ(on.state(), TalmoState::recording());
    pressEscape();
    EXPECT_EQ(on.state(), TalmoState::idle());
    on.pause();
    on.hold();
    EXPECT_EQ(on.state(), TalmoState::recording());
    on.release();
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DictationCancellationTest, handsFreeHintNamesBothKeys)
{
    on.doubleTap();
    EXPECT_EQ(on.notice->hint(), u"%1: stop · Esc: discard"_s);
    EXPECT_EQ(on.notice->hintKey(), u"Right Ctrl"_s);
    pressEscape();
    EXPECT_EQ(on.notice->hint(), QString());
}

TEST_F(DictationCancellationTest, hintDoesNotPromiseAKeyThatAnotherProgramHolds)
{
    key->isTaken = true;
    on.doubleTap();
    EXPECT_EQ(on.state(), TalmoState::recording());
    EXPECT_EQ(on.notice->hint(), u"%1: stop"_s);
}

TEST_F(DictationCancellationTest, holdNeedsNoHint)
{
    on.hold();
    EXPECT_EQ(on.notice->hint(), QString());
}

TEST_F(DictationCancellationTest, recordingFromMenuNamesTheCancelKeyOnly)
{
    on.world.coordinator->beginDictation();
    settle();
    EXPECT_EQ(on.notice->hint(), u"Esc: discard"_s);
}

TEST_F(DictationCancellationTest, recordingFromMenuWithoutCancelKeyHasNoHint)
{
    key->isTaken = true;
    on.world.coordinator->beginDictation();
    settle();
    EXPECT_EQ(on.notice->hint(), QString());
}

TEST_F(DictationCancellationTest, cancellingAfterTheEndChangesNothing)
{
    on.hold();
    on.release();
    ASSERT_EQ(on.state(), TalmoState::processing());
    on.world.takeCalls();
    on.world.coordinator->cancelDictation();
    settle();
    EXPECT_EQ(on.state(), TalmoState::processing());
    EXPECT_THAT(on.world.calls, Not(Contains("cancelTranscription")));
}

} // namespace talmo::test
