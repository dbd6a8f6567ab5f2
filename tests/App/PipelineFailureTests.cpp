// Misbehaving services and rare platform failures: each ends in the error state or is survived.

#include "Input/Audio/AudioRecorder.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Support/FailingClock.h"
#include "Support/FakeAudioEngine.h"
#include "Support/FakeEventMonitor.h"
#include "Support/Printing.h"
#include "Support/RecordingWorld.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace talmo::test {

using testing::Contains;

TEST(PipelineFailure, throwingCleanupEndsInErrorAndKeepsText)
{
    RecordingWorld world;
    world.coordinator->start();
    world.onCleanup = [] { return makeFailedFuture<QString>(std::make_exception_ptr(Error(u"broken"_s))); };
    world.hotkeys->down();
    settle();
    world.hotkeys->up();
    settle();
    EXPECT_EQ(world.coordinator->state(), TalmoState::error(u"broken"_s));
    EXPECT_EQ(world.coordinator->liveTranscript(), u"hello world"_s);
    EXPECT_THAT(world.calls, Contains("cancelTranscription"));
    world.clock->advance(std::chrono::seconds(5));
}

TEST(PipelineFailure, hidesErrorOverlayWhenTimerFails)
{
    RecordingWorld world([](CoordinatorParts &parts) { parts.clock = std::make_shared<FailingClock>(); });
    world.coordinator->start();
    world.permissions->microphone = SimpleStatus::Denied;
    world.hotkeys->down();
    settle();
    EXPECT_EQ(world.calls.back(), "overlay.hide");
}

TEST(PipelineFailure, signalsHoldWhenTimerFails)
{
    const auto keys = std::make_shared<FakeEventMonitor>();
    GlobalHotkeyManager manager(keys, std::make_shared<FakeInputTrust>(), std::make_shared<FailingClock>(),
                                SerialExecutor::onCurrentThread());
    int downs = 0;
    manager.setOnHotkeyDown([&downs] { ++downs; });
    manager.start();
    keys->press();
    settle();
    EXPECT_EQ(downs, 1);
}

TEST(PipelineFailure, anyTapExceptionIsTapInstallationFailure)
{
    const auto engine = std::make_shared<FakeAudioEngine>();
    engine->tapFailure = std::make_exception_ptr(std::runtime_error("out of memory"));
    AudioRecorder recorder(engine);
    QString message;
    try {
        recorder.start([](const auto &, const auto &) {});
    } catch (const RecorderError &error) {
        EXPECT_EQ(error.which(), RecorderError::Case::TapInstallationFailed);
        message = error.localizedDescription();
    } catch (const std::exception &) {
        message = u"something else"_s;
    }
    EXPECT_EQ(message, u"Couldn't set up microphone capture: out of memory"_s);
    EXPECT_FALSE(recorder.isRecording());
}

} // namespace talmo::test
