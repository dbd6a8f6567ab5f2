#include "App/TalmoCoordinator.h"

#include "App/CoordinatorFixture.h"
#include "Speech/TranscriptionError.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/RecordingWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString permissionMessage = u"Grant microphone and speech-recognition permissions first."_s;

std::exception_ptr failure(const QString &text)
{
    return std::make_exception_ptr(Error(text));
}

class TalmoCoordinatorErrorTest : public CoordinatorFixture {};

} // namespace

TEST_F(TalmoCoordinatorErrorTest, missingPermissionShowsErrorFor3Seconds)
{
    for (const bool isMicrophone : {true, false}) {
        world.permissions->microphone = isMicrophone ? SimpleStatus::Denied : SimpleStatus::Granted;
        world.permissions->speech = isMicrophone ? SimpleStatus::Granted : SimpleStatus::NotDetermined;
        world.takeCalls();
        press();
        EXPECT_EQ(state(), TalmoState::error(permissionMessage));
        EXPECT_EQ(world.coordinator->lastError(), permissionMessage);
        EXPECT_EQ(world.takeCalls().back(), "overlay.show");
        EXPECT_EQ(log.lines().back(), u"general debug: error: "_s + permissionMessage);
        world.clock->advance(3s - 1ns);
        EXPECT_THAT(world.takeCalls(), IsEmpty());
        world.clock->advance(1ns);
        EXPECT_THAT(world.takeCalls(), ElementsAre("overlay.hide"));
        EXPECT_EQ(state(), TalmoState::error(permissionMessage));
    }
}

TEST_F(TalmoCoordinatorErrorTest, releaseInErrorIsIgnored)
{
    world.onStart = [] { return makeFailedFuture<void>(failure(u"no"_s)); };
    press();
    world.takeCalls();
    release();
    EXPECT_THAT(world.takeCalls(), IsEmpty());
    EXPECT_EQ(state(), TalmoState::error(u"no"_s));
}

TEST_F(TalmoCoordinatorErrorTest, unsupportedLocaleFails)
{
    world.onModelStatus = [] { return makeReadyFuture(ModelStatus{false, false}); };
    press();
    EXPECT_EQ(state(), TalmoState::error(u"The current language isn't supported for on-device transcription."_s));
    EXPECT_THAT(world.takeCalls(), ElementsAre("modelStatus en_US", "recorder.stop", "makeOverlay", "overlay.show",
                                               "cancelTranscription"));
}

TEST_F(TalmoCoordinatorErrorTest, failedInstallIsShownAndRecheckedNextTime)
{
    world.onModelStatus = [] { return makeReadyFuture(ModelStatus{true, false}); };
    world.onInstall = [] { return makeFailedFuture<void>(failure(u"offline"_s)); };
    press();
    EXPECT_EQ(state(), TalmoState::error(u"offline"_s));
    world.takeCalls();
    press();
    EXPECT_EQ(world.takeCalls().front(), "modelStatus en_US");
}

TEST_F(TalmoCoordinatorErrorTest, modelCheckIsCachedPerLocaleAcrossFailures)
{
    press();
    release();
    world.takeCalls();
    world.onInsert = [] { return makeFailedFuture<void>(failure(u"no"_s)); };
    press();
    EXPECT_EQ(world.takeCalls().front(), "startTranscription en_US");
    release();
    world.takeCalls();
    press();
    EXPECT_EQ(world.takeCalls().front(), "startTranscription en_US");
    release();
    world.locale = u"en_GB"_s;
    world.takeCalls();
    press();
    EXPECT_EQ(world.takeCalls().front(), "modelStatus en_GB");
}

TEST_F(TalmoCoordinatorErrorTest, failedStartShowsItsDescription)
{
    world.onStart = [] {
        return makeFailedFuture<void>(
            std::make_exception_ptr(TranscriptionError(TranscriptionError::Case::NoCompatibleAudioFormat)));
    };
    press();
    EXPECT_EQ(state(), TalmoState::error(u"Couldn't find a compatible audio format for the microphone and speech "
                                         u"recognizer."_s));
}

TEST_F(TalmoCoordinatorErrorTest, onErrorTearsDownInAnyState)
{
    press();
    const auto onError = world.onError;
    world.takeCalls();
    onError(failure(u"broke"_s));
    settle();
    EXPECT_EQ(state(), TalmoState::error(u"broke"_s));
    EXPECT_THAT(world.takeCalls(), ElementsAre("recorder.stop", "overlay.show", "cancelTranscription"));
    onError(failure(u"again"_s)); // In the error state.
    settle();
    EXPECT_EQ(state(), TalmoState::error(u"again"_s));
    press();
    release();
    EXPECT_EQ(state(), TalmoState::idle());
    onError(failure(u"late"_s)); // When idle.
    settle();
    EXPECT_EQ(state(), TalmoState::error(u"late"_s));
}

TEST_F(TalmoCoordinatorErrorTest, pressRightAfterFailureDictatesAgain)
{
    press();
    world.onError(failure(u"broke"_s));
    world.hotkeys->down();
    world.takeCalls();
    settle();
    EXPECT_EQ(state(), TalmoState::recording());
    release();
    EXPECT_EQ(state(), TalmoState::idle());
}

TEST_F(TalmoCoordinatorErrorTest, failedStopIsShown)
{
    press();
    world.onStop = [] { return makeFailedFuture<QString>(failure(u"finalise"_s)); };
    release();
    EXPECT_EQ(state(), TalmoState::error(u"finalise"_s));
}

TEST_F(TalmoCoordinatorErrorTest, emptyTranscriptStaysNoSpeechErrorAfterOverlayHides)
{
    world.transcript = QString();
    press();
    release();
    EXPECT_EQ(state(), TalmoState::error(u"No speech detected."_s));
    EXPECT_EQ(world.takeCalls().back(), "overlay.show");
    world.clock->advance(3s);
    EXPECT_THAT(world.takeCalls(), ElementsAre("overlay.hide"));
    EXPECT_EQ(state(), TalmoState::error(u"No speech detected."_s));
}

TEST_F(TalmoCoordinatorErrorTest, failedInsertionIsShown)
{
    world.onInsert = [] { return makeFailedFuture<void>(failure(u"no access"_s)); };
    press();
    release();
    EXPECT_EQ(state(), TalmoState::error(u"no access"_s));
    EXPECT_EQ(world.coordinator->liveTranscript(), u"Hello world."_s);
    const auto calls = world.takeCalls();
    EXPECT_THAT(RecordingWorld::Calls(calls.end() - 3, calls.end()),
                ElementsAre("recorder.stop", "overlay.show", "cancelTranscription"));
}

TEST_F(TalmoCoordinatorErrorTest, repeatedErrorWithin3SecondsHidesEarly)
{
    world.onStart = [] { return makeFailedFuture<void>(failure(u"same"_s)); };
    press();
    world.clock->advance(2s);
    press();
    world.takeCalls();
    world.clock->advance(1s);
    EXPECT_THAT(world.takeCalls(), ElementsAre("overlay.hide"));
}

TEST_F(TalmoCoordinatorErrorTest, timerOfReplacedErrorDoesNothing)
{
    world.onStart = [] { return makeFailedFuture<void>(failure(u"first"_s)); };
    press();
    world.clock->advance(2s);
    world.onStart = [] { return makeFailedFuture<void>(failure(u"second"_s)); };
    press();
    world.takeCalls();
    world.clock->advance(1s);
    EXPECT_THAT(world.takeCalls(), IsEmpty());
    world.clock->advance(2s);
    EXPECT_THAT(world.takeCalls(), ElementsAre("overlay.hide"));
}

TEST_F(TalmoCoordinatorErrorTest, errorTimerDoesNotHideNextDictation)
{
    world.onStart = [] { return makeFailedFuture<void>(failure(u"first"_s)); };
    press();
    world.onStart = [] { return makeReadyFuture(); };
    press();
    world.takeCalls();
    world.clock->advance(10s);
    EXPECT_THAT(world.takeCalls(), IsEmpty());
    EXPECT_EQ(state(), TalmoState::recording());
}

} // namespace talmo::test
