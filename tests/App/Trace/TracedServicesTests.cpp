#include "App/Trace/TracedServices.h"

#include "Support/Printing.h"
#include "Support/RecordingWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::HasSubstr;
using testing::Not;

namespace {

class TracedServicesTest : public testing::Test {
protected:
    std::shared_ptr<DictationTrace> trace;
    RecordingWorld world{[this](CoordinatorParts &parts) {
        trace = std::make_shared<DictationTrace>(parts.clock);
        parts.hotkeyManager = std::make_shared<TracedHotkeyService>(parts.hotkeyManager, trace);
        parts.audioRecorder = std::make_shared<TracedRecorder>(parts.audioRecorder, trace);
        parts.transcriptionService = std::make_shared<TracedTranscriptionService>(parts.transcriptionService, trace);
        parts.textCleanupService = std::make_shared<TracedCleanupService>(parts.textCleanupService, trace);
    }};

    void SetUp() override { world.coordinator->start(); }

    std::string table() const { return trace->table().value_or(QString()).toStdString(); }
};

} // namespace

TEST_F(TracedServicesTest, eachServiceNotesItsStageWhenItIsReached)
{
    world.hotkeys->down();
    settle();
    EXPECT_THAT(table(), HasSubstr("recording"));
    EXPECT_THAT(table(), Not(HasSubstr("key released")));
    const auto text = Completion<QString>::make();
    world.onStop = [text] { return text->future(); };
    world.hotkeys->up();
    settle();
    EXPECT_THAT(table(), HasSubstr("last audio"));
    EXPECT_THAT(table(), Not(HasSubstr("text recognised")));
    const auto cleaned = Completion<QString>::make();
    world.onCleanup = [cleaned] { return cleaned->future(); };
    text->finish(u"hello"_s);
    settle();
    EXPECT_THAT(table(), HasSubstr("text recognised"));
    EXPECT_THAT(table(), Not(HasSubstr("text cleaned up")));
    cleaned->finish(u"Hello."_s);
    settle();
    EXPECT_THAT(table(), HasSubstr("text cleaned up"));
}

TEST_F(TracedServicesTest, recordingThatFailsLeavesNoTrace)
{
    world.onStart = [] {
        const auto completion = Completion<void>::make();
        completion->fail(std::make_exception_ptr(Error(u"no microphone"_s)));
        return completion->future();
    };
    world.hotkeys->down();
    settle();
    EXPECT_TRUE(world.coordinator->state().is(TalmoState::Case::Error));
    EXPECT_EQ(trace->table(), std::nullopt);
}

} // namespace talmo::test
