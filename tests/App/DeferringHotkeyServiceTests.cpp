#include "App/DeferringHotkeyService.h"

#include "Support/GestureWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

const QString stillWorking = u"Still working on the last sentence"_s;

class DeferringHotkeyServiceTest : public testing::Test {
protected:
    QFuture<bool> finish() { return on.gestures->finishDictation(5s); }
    void expectFinished(const QFuture<bool> &finishing, bool isDone)
    {
        settle();
        ASSERT_TRUE(finishing.isFinished());
        EXPECT_EQ(finishing.result(), isDone);
    }
    GestureWorld on;
};

} // namespace

TEST_F(DeferringHotkeyServiceTest, holdWhileIdleRecordsUntilReleased)
{
    on.hold();
    EXPECT_EQ(on.state(), TalmoState::recording());
    on.release();
    EXPECT_EQ(on.state(), TalmoState::processing());
    EXPECT_EQ(on.notice->text(), QString());
}

TEST_F(DeferringHotkeyServiceTest, holdDuringEditInsertsLocalTextThenRecords)
{
    on.beEditing();
    ASSERT_EQ(on.state(), TalmoState::processing());
    on.world.takeCalls();
    on.hold();
    EXPECT_THAT(on.world.calls, Contains("insert \"Local.\""));
    EXPECT_THAT(on.world.calls, Not(Contains("startTranscription en_US")));
    on.endInsertion();
    EXPECT_EQ(on.state(), TalmoState::recording());
    EXPECT_THAT(on.world.calls, Not(Contains("preroll.discard")));
    on.release();
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, modelEditsAgainAfterAnAbandonedEdit)
{
    on.beEditing();
    on.hold();
    on.endInsertion();
    on.world.takeCalls();
    on.release();
    EXPECT_THAT(on.world.calls, Contains("cleanup \"hello world\" ai full 0 Talmo"));
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, holdBeforeEditStartsSkipsTheModel)
{
    const auto stopped = Completion<QString>::make();
    on.world.onStop = [stopped] { return stopped->future(); };
    on.beEditing();
    on.hold();
    on.world.takeCalls();
    stopped->finish(u"hello world"_s);
    settle();
    EXPECT_THAT(on.world.calls, Contains("cleanup \"hello world\" local full 0 Talmo"));
    EXPECT_THAT(on.world.calls, Contains("insert \"Local.\""));
}

TEST_F(DeferringHotkeyServiceTest, holdReleasedWhileWaitingIsRecordedAndEnded)
{
    on.beInserting();
    on.world.takeCalls();
    on.hold();
    on.release();
    EXPECT_THAT(on.world.calls, ElementsAre("preroll.begin", "warmUp", "preroll.pause"));
    on.endInsertion();
    EXPECT_EQ(on.count("startTranscription en_US"), 1);
    EXPECT_EQ(on.count("recorder.stop"), 1);
    EXPECT_EQ(on.count("stopTranscription"), 1);
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, doubleTapDuringEditRecordsHandsFree)
{
    on.beEditing();
    on.doubleTap();
    on.pause();
    on.endInsertion();
    EXPECT_EQ(on.state(), TalmoState::recording());
    on.press();
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, handsFreeEndedWhileWaitingIsRecordedAndEnded)
{
    on.beInserting();
    on.doubleTap();
    on.pause();
    on.press();
    on.release();
    EXPECT_EQ(on.state(), TalmoState::inserting());
    on.endInsertion();
    EXPECT_EQ(on.count("stopTranscription"), 2);
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, secondHoldWhileWaitingJoinsTheFirst)
{
    on.beInserting();
    on.hold();
    on.release();
    on.pause();
    on.world.takeCalls();
    on.hold();
    EXPECT_THAT(on.world.calls, ElementsAre("preroll.resume"));
    on.endInsertion();
    EXPECT_EQ(on.state(), TalmoState::recording());
    on.release();
    EXPECT_EQ(on.state(), TalmoState::processing());
    EXPECT_EQ(on.count("startTranscription en_US"), 1);
}

TEST_F(DeferringHotkeyServiceTest, deferredPressRunsAfterAnError)
{
    on.beInserting();
    on.hold();
    on.insertion->fail(std::make_exception_ptr(Error(u"no window"_s)));
    settle();
    EXPECT_EQ(on.state(), TalmoState::recording());
}

TEST_F(DeferringHotkeyServiceTest, shortWaitIsNotAnnounced)
{
    on.beInserting();
    on.hold();
    on.pass(DeferringHotkeyService::noticeDelay - 1ms);
    EXPECT_EQ(on.notice->text(), QString());
    on.endInsertion();
    on.pass(10s);
    EXPECT_EQ(on.notice->text(), QString());
}

TEST_F(DeferringHotkeyServiceTest, longWaitIsAnnouncedUntilRecordingStarts)
{
    on.beInserting();
    on.hold();
    on.pass(DeferringHotkeyService::noticeDelay);
    EXPECT_EQ(on.notice->text(), stillWorking);
    on.endInsertion();
    EXPECT_EQ(on.notice->text(), QString());
    EXPECT_EQ(on.state(), TalmoState::recording());
}

TEST_F(DeferringHotkeyServiceTest, pressDuringHangingInsertionShowsNoticeImmediately)
{
    on.beInserting();
    on.pass(DeferringHotkeyService::noticeDelay);
    on.hold();
    EXPECT_EQ(on.notice->text(), stillWorking);
}

TEST_F(DeferringHotkeyServiceTest, earlierInsertionDoesNotMakeTheNextOneLookStuck)
{
    on.beInserting();
    on.endInsertion();
    on.pass(DeferringHotkeyService::noticeDelay);
    on.beInserting();
    on.hold();
    EXPECT_EQ(on.notice->text(), QString());
}

TEST_F(DeferringHotkeyServiceTest, releaseBeforeRecordingStartsEndsIt)
{
    const auto checked = Completion<ModelStatus>::make();
    on.world.onModelStatus = [checked] { return checked->future(); };
    on.hold();
    on.release();
    EXPECT_EQ(on.state(), TalmoState::idle());
    EXPECT_THAT(on.world.calls, Contains("preroll.pause"));
    checked->finish(ModelStatus{true, true});
    settle();
    EXPECT_EQ(on.count("recorder.stop"), 1);
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, secondHoldBeforeRecordingStartsDoesNotRecordTwice)
{
    const auto checked = Completion<ModelStatus>::make();
    on.world.onModelStatus = [checked] { return checked->future(); };
    on.hold();
    on.release();
    on.pause();
    on.hold();
    checked->finish(ModelStatus{true, true});
    settle();
    EXPECT_EQ(on.count("startTranscription en_US"), 1);
    EXPECT_EQ(on.state(), TalmoState::recording());
    on.release();
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, failedStartClosesMicrophoneAndNextHoldRecords)
{
    on.world.onStart = [] { return makeFailedFuture<void>(std::make_exception_ptr(Error(u"no microphone"_s))); };
    on.hold();
    EXPECT_EQ(on.state(), TalmoState::error(u"no microphone"_s));
    EXPECT_THAT(on.world.calls, Contains("preroll.close"));
    EXPECT_FALSE(on.gestures->isGestureActive());
    on.release();
    on.pause();
    on.world.onStart = [] { return makeReadyFuture(); };
    on.hold();
    EXPECT_EQ(on.state(), TalmoState::recording());
}

TEST_F(DeferringHotkeyServiceTest, refusedGestureClosesMicrophone)
{
    on.world.permissions->microphone = SimpleStatus::Denied;
    on.hold();
    EXPECT_THAT(on.world.calls, Contains("preroll.close"));
    EXPECT_FALSE(on.gestures->isGestureActive());
}

TEST_F(DeferringHotkeyServiceTest, finishingWhileIdleCompletesImmediately)
{
    expectFinished(finish(), true);
}

TEST_F(DeferringHotkeyServiceTest, finishingWhileRecordingInsertsLocalText)
{
    on.hold();
    const auto finishing = finish();
    settle();
    EXPECT_FALSE(finishing.isFinished());
    EXPECT_THAT(on.world.calls, Contains("insert \"Local.\""));
    on.endInsertion();
    expectFinished(finishing, true);
    EXPECT_EQ(on.state(), TalmoState::idle());
}

TEST_F(DeferringHotkeyServiceTest, finishingWhileModelEditsInsertsLocalText)
{
    on.beEditing();
    const auto finishing = finish();
    settle();
    EXPECT_THAT(on.world.calls, Contains("insert \"Local.\""));
    on.endInsertion();
    expectFinished(finishing, true);
}

TEST_F(DeferringHotkeyServiceTest, finishingWithDeferredGestureInsertsBothSentences)
{
    on.beInserting();
    on.hold();
    const auto finishing = finish();
    on.endInsertion();
    EXPECT_FALSE(finishing.isFinished());
    EXPECT_EQ(on.state(), TalmoState::inserting());
    on.endInsertion();
    expectFinished(finishing, true);
}

TEST_F(DeferringHotkeyServiceTest, finishingTimesOutAndReenablesTheKey)
{
    on.beInserting();
    const auto finishing = finish();
    on.pass(5s);
    expectFinished(finishing, false);
    on.endInsertion();
    on.hold();
    EXPECT_EQ(on.state(), TalmoState::recording());
}

TEST_F(DeferringHotkeyServiceTest, menuRecordsUntilItEndsTheGesture)
{
    on.gestures->beginGesture();
    settle();
    EXPECT_EQ(on.state(), TalmoState::recording());
    EXPECT_EQ(on.count("preroll.begin"), 0); // The recording itself opens the microphone.
    on.gestures->endGesture();
    settle();
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, menuDuringEditKeepsSpeechAndRecordsNext)
{
    on.beEditing();
    on.world.takeCalls();
    on.gestures->beginGesture();
    settle();
    EXPECT_THAT(on.world.calls, Contains("preroll.begin"));
    EXPECT_THAT(on.world.calls, Contains("insert \"Local.\""));
    EXPECT_THAT(on.world.calls, Not(Contains("startTranscription en_US")));
    on.endInsertion();
    EXPECT_EQ(on.state(), TalmoState::recording());
    EXPECT_EQ(on.count("preroll.begin"), 1);
}

TEST_F(DeferringHotkeyServiceTest, menuChosenTwiceBeforeRecordingStartsRecordsOnce)
{
    const auto checked = Completion<ModelStatus>::make();
    on.world.onModelStatus = [checked] { return checked->future(); };
    on.gestures->beginGesture();
    settle();
    on.gestures->beginGesture();
    checked->finish(ModelStatus{true, true});
    settle();
    EXPECT_EQ(on.count("startTranscription en_US"), 1);
    EXPECT_EQ(on.state(), TalmoState::recording());
}

TEST_F(DeferringHotkeyServiceTest, keyEndsWhatTheMenuBegan)
{
    on.gestures->beginGesture();
    settle();
    on.hold();
    EXPECT_EQ(on.state(), TalmoState::recording());
    on.release();
    EXPECT_EQ(on.state(), TalmoState::processing());
}

TEST_F(DeferringHotkeyServiceTest, menuOpensNoMicrophoneWhileFinishing)
{
    on.beInserting();
    const auto finishing = finish();
    on.world.takeCalls();
    on.gestures->beginGesture();
    settle();
    EXPECT_THAT(on.world.calls, IsEmpty());
    on.endInsertion();
    expectFinished(finishing, true);
    EXPECT_EQ(on.state(), TalmoState::idle());
}

TEST_F(DeferringHotkeyServiceTest, menuOpensNoMicrophoneAfterClose)
{
    on.beInserting();
    on.gestures->close();
    on.world.takeCalls();
    on.gestures->beginGesture();
    settle();
    EXPECT_THAT(on.world.calls, IsEmpty());
}

TEST_F(DeferringHotkeyServiceTest, ignoresKeyAfterClose)
{
    on.gestures->close();
    on.hold();
    on.release();
    EXPECT_EQ(on.state(), TalmoState::idle());
    EXPECT_EQ(on.count("startTranscription en_US"), 0);
}

} // namespace talmo::test
