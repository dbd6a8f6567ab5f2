#include "App/TalmoCoordinator.h"

#include "App/CoordinatorFixture.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Support/FakeEventMonitor.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/RecordingWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

std::exception_ptr failure(const QString &text)
{
    return std::make_exception_ptr(Error(text));
}

class TalmoCoordinatorTest : public CoordinatorFixture {};

} // namespace

TEST_F(TalmoCoordinatorTest, startsIdleAndSetsBothHotkeyCallbacks)
{
    RecordingWorld fresh;
    EXPECT_EQ(fresh.coordinator->state(), TalmoState::idle());
    EXPECT_EQ(fresh.coordinator->liveTranscript(), QString());
    EXPECT_FALSE(fresh.coordinator->lastError());
    EXPECT_THAT(fresh.takeCalls(), IsEmpty());
    fresh.coordinator->start();
    EXPECT_THAT(fresh.takeCalls(), ElementsAre("hotkeys.start"));
}

TEST_F(TalmoCoordinatorTest, holdGestureMakesAllCallsInOrder)
{
    press();
    EXPECT_EQ(state(), TalmoState::recording());
    EXPECT_THAT(world.takeCalls(),
                ElementsAre("modelStatus en_US", "startTranscription en_US", "makeOverlay", "overlay.show"));
    world.onUpdate(u"hello"_s);
    EXPECT_EQ(world.coordinator->liveTranscript(), u"hello"_s);
    release();
    EXPECT_THAT(world.takeCalls(), ElementsAre("overlay.show", "recorder.stop", "stopTranscription",
                                               "cleanup \"hello world\" ai full 0 Talmo", "overlay.show",
                                               "insert \"Hello world.\"", "overlay.hide"));
    EXPECT_EQ(state(), TalmoState::idle());
    EXPECT_EQ(world.coordinator->liveTranscript(), u"Hello world."_s);
    EXPECT_THAT(log.lines(), ElementsAre(u"general debug: raw transcript: hello world"_s,
                                         u"general debug: cleaned transcript: Hello world."_s));
}

TEST_F(TalmoCoordinatorTest, stopsRecorderBeforeAnyAwait)
{
    press();
    world.takeCalls();
    world.hotkeys->up();
    EXPECT_THAT(world.takeCalls(), ElementsAre("overlay.show", "recorder.stop"));
    EXPECT_EQ(state(), TalmoState::processing());
}

TEST_F(TalmoCoordinatorTest, stateChangesOnlyAfterStartSequenceSucceeds)
{
    world.hotkeys->down();
    EXPECT_THAT(world.takeCalls(), IsEmpty());
    EXPECT_EQ(state(), TalmoState::idle());
    settle();
    EXPECT_EQ(state(), TalmoState::recording());
}

TEST_F(TalmoCoordinatorTest, newDictationClearsTranscriptAndError)
{
    world.onStart = [] { return makeFailedFuture<void>(failure(u"no"_s)); };
    press();
    EXPECT_EQ(world.coordinator->lastError(), u"no"_s);
    world.onUpdate(u"late"_s);
    world.onStart = [] { return makeReadyFuture(); };
    world.hotkeys->down();
    EXPECT_EQ(world.coordinator->liveTranscript(), QString());
    EXPECT_FALSE(world.coordinator->lastError());
    EXPECT_EQ(state(), TalmoState::error(u"no"_s));
    settle();
    EXPECT_EQ(state(), TalmoState::recording());
}

TEST_F(TalmoCoordinatorTest, eachStateIgnoresUnexpectedEvents)
{
    auto gate = Completion<void>::make();
    release();
    EXPECT_THAT(world.takeCalls(), IsEmpty()); // Idle: release.
    press();
    world.takeCalls();
    press();
    EXPECT_THAT(world.takeCalls(), IsEmpty()); // Recording: press.
    auto stopGate = Completion<QString>::make();
    world.onStop = [stopGate] { return stopGate->future(); };
    world.onInsert = [gate] { return gate->future(); };
    release();
    world.takeCalls();
    press();
    release();
    EXPECT_THAT(world.takeCalls(), IsEmpty()); // Processing: both.
    EXPECT_EQ(state(), TalmoState::processing());
    stopGate->finish(u"words"_s);
    settle();
    EXPECT_EQ(state(), TalmoState::inserting());
    world.takeCalls();
    press();
    release();
    EXPECT_THAT(world.takeCalls(), IsEmpty()); // Inserting: both.
    gate->finish();
    settle();
    EXPECT_EQ(state(), TalmoState::idle());
}

TEST_F(TalmoCoordinatorTest, missingModelIsInstalledOnceAndLogged)
{
    world.onModelStatus = [] { return makeReadyFuture(ModelStatus{true, false}); };
    auto gate = Completion<void>::make();
    world.onInstall = [gate] { return gate->future(); };
    press();
    EXPECT_EQ(state(), TalmoState::idle());
    EXPECT_THAT(log.lines(), ElementsAre(u"general debug: Installing on-device speech model for en_US (one-time "
                                         u"download, requires internet)…"_s));
    EXPECT_EQ(log.formats().front(), u"%s"_s);
    gate->finish();
    settle();
    EXPECT_EQ(state(), TalmoState::recording());
    EXPECT_THAT(world.takeCalls(), ElementsAre("modelStatus en_US", "installModel en_US", "startTranscription en_US",
                                               "makeOverlay", "overlay.show"));
}

TEST_F(TalmoCoordinatorTest, releaseDuringStartSequenceIsIgnored)
{
    auto gate = Completion<void>::make();
    world.onStart = [gate] { return gate->future(); };
    press();
    release();
    gate->finish();
    settle();
    EXPECT_EQ(state(), TalmoState::recording());
    release();
    EXPECT_EQ(state(), TalmoState::idle());
}

TEST_F(TalmoCoordinatorTest, secondPressDuringStartSequenceStartsAnother)
{
    auto gate = Completion<ModelStatus>::make();
    world.onModelStatus = [gate] { return gate->future(); };
    press();
    press();
    gate->finish(ModelStatus{true, true});
    settle();
    EXPECT_THAT(world.takeCalls(),
                ElementsAre("modelStatus en_US", "modelStatus en_US", "startTranscription en_US", "makeOverlay",
                            "overlay.show", "startTranscription en_US", "overlay.show"));
}

TEST_F(TalmoCoordinatorTest, blankTranscriptIsInsertedAsEmptyText)
{
    world.transcript = u"  \n "_s;
    world.onInsert = [] { return makeFailedFuture<void>(failure(u"Nothing to insert."_s)); };
    press();
    release();
    EXPECT_EQ(state(), TalmoState::error(u"Nothing to insert."_s));
    EXPECT_THAT(world.takeCalls(), testing::Contains("insert \"\""));
    EXPECT_THAT(world.calls, testing::Not(testing::Contains(testing::StartsWith("cleanup"))));
}

TEST_F(TalmoCoordinatorTest, trimsTranscriptBeforeCleanup)
{
    world.transcript = u" \n hello \n"_s;
    press();
    release();
    EXPECT_THAT(world.takeCalls(), testing::Contains("cleanup \"hello\" ai full 0 Talmo"));
}

TEST_F(TalmoCoordinatorTest, settingChangedDuringProcessingAffectsOnlyNextDictation)
{
    auto gate = Completion<QString>::make();
    world.onCleanup = [gate] { return gate->future(); };
    press();
    release();
    world.settings->ai = false;
    world.settings->concise = true;
    world.settings->tone = TextTone::Polite;
    world.settings->words = QStringList{u"A"_s, u"B"_s};
    gate->finish(u"Done."_s);
    settle();
    EXPECT_THAT(world.takeCalls(), testing::Contains("cleanup \"hello world\" ai full 0 Talmo"));
    press();
    release();
    EXPECT_THAT(world.takeCalls(), testing::Contains("cleanup \"hello world\" local concise 3 A,B"));
}

TEST_F(TalmoCoordinatorTest, requestsPermissionsInOrderWhateverTheAnswers)
{
    world.permissions->answer = false;
    auto task = world.coordinator->requestPermissions();
    settle();
    EXPECT_THAT(world.takeCalls(), ElementsAre("requestMicrophonePermission", "requestSpeechRecognitionPermission",
                                               "requestAccessibility"));
}

TEST_F(TalmoCoordinatorTest, announcesOwnAndChildChangesBeforeStoring)
{
    std::vector<QString> states;
    QObject::connect(world.coordinator.get(), &Observable::objectWillChange, world.coordinator.get(),
                     [&] { states.push_back(name(state())); });
    Q_EMIT world.settings->objectWillChange();
    Q_EMIT world.permissions->objectWillChange();
    EXPECT_EQ(states.size(), 2U);
    press();
    EXPECT_EQ(states.back(), u"idle"_s);
    EXPECT_EQ(state(), TalmoState::recording());
}

TEST_F(TalmoCoordinatorTest, callbacksAfterDestructionDoNothing)
{
    auto gate = Completion<void>::make();
    world.onStart = [gate] { return gate->future(); };
    press();
    world.coordinator.reset();
    gate->finish();
    settle();
    world.onUpdate(u"late"_s);
    world.onError(failure(u"late"_s));
    world.hotkeys->down();
    world.hotkeys->up();
    world.clock->advance(10s);
    EXPECT_THAT(world.takeCalls(), ElementsAre("modelStatus en_US", "startTranscription en_US"));
}

TEST_F(TalmoCoordinatorTest, canBeDestroyedInEveryState)
{
    for (int reached = 0; reached < 5; ++reached) {
        const auto stopGate = Completion<QString>::make();
        const auto insertGate = Completion<void>::make();
        RecordingWorld other;
        if (reached == 2) {
            other.onStop = [stopGate] { return stopGate->future(); };
        }
        if (reached == 3) {
            other.onInsert = [insertGate] { return insertGate->future(); };
        }
        if (reached == 4) {
            other.onStart = [] { return makeFailedFuture<void>(failure(u"no"_s)); };
        }
        if (reached > 0) {
            other.coordinator->beginDictation();
            settle();
        }
        if (reached == 2 || reached == 3) {
            other.coordinator->endDictation();
            settle();
        }
        EXPECT_EQ(static_cast<int>(other.coordinator->state().which()), reached);
        other.coordinator.reset();
        stopGate->finish(u"late"_s);
        insertGate->finish();
        settle();
        other.clock->advance(10s);
    }
}

TEST_F(TalmoCoordinatorTest, pressAfterErrorOrMenuStopOnlyEndsHandsFree)
{
    const auto monitor = std::make_shared<FakeEventMonitor>();
    GlobalHotkeyManager manager(monitor, std::make_shared<FakeInputTrust>(), world.clock,
                                SerialExecutor::onCurrentThread());
    manager.setOnHotkeyDown(world.hotkeys->down);
    manager.setOnHotkeyUp(world.hotkeys->up);
    manager.start();
    const auto doubleTap = [&] {
        world.clock->advance(1s);
        for (int tap = 0; tap < 2; ++tap) {
            monitor->press();
            world.clock->advance(50ms);
            monitor->release();
            world.clock->advance(50ms);
        }
    };
    for (const bool isError : {true, false}) {
        doubleTap();
        ASSERT_EQ(state(), TalmoState::recording());
        if (isError) {
            world.onError(failure(u"broke"_s));
        } else {
            world.coordinator->endDictation(); // As the menu does.
        }
        settle();
        const TalmoState ended = state();
        EXPECT_EQ(manager.recognizer().activeMode(), ActiveMode::Toggle);
        world.clock->advance(1s);
        monitor->press();
        world.clock->advance(1s);
        EXPECT_EQ(state(), ended);
        EXPECT_EQ(manager.recognizer().activeMode(), std::nullopt);
        monitor->release();
    }
}

TEST(TalmoCoordinatorShared, isBuiltOnceByRegisteredFactory)
{
    RecordingWorld world;
    int built = 0;
    TalmoCoordinator::setSharedFactory([&] {
        ++built;
        return std::move(world.coordinator);
    });
    auto &first = TalmoCoordinator::shared();
    EXPECT_EQ(&first, &TalmoCoordinator::shared());
    EXPECT_EQ(built, 1);
    TalmoCoordinator::releaseShared();
    TalmoCoordinator::setSharedFactory({});
}

} // namespace talmo::test
