#include "App/InstructionsWarmUp.h"

#include "Cleanup/CleanupInstructions.h"
#include "Support/Printing.h"
#include "Support/RecordingWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class InstructionsWarmUpTest : public testing::Test {
protected:
    RecordingWorld world;
    QStringList given;
    int cancelled = 0;
    std::optional<InstructionsWarmUp> warmUp{
        std::in_place, *world.coordinator,
        InstructionsWarmUp::Parts{[this](const QString &instructions) { given.append(instructions); },
                                  [this] { ++cancelled; }}};

    void begin()
    {
        world.coordinator->beginDictation();
        settle();
    }
    void end()
    {
        world.coordinator->endDictation();
        settle();
    }
    QString instructions() const
    {
        const auto &settings = *world.settings;
        return buildInstructions(settings.words, false, settings.concise, settings.tone);
    }
    void announceSettings()
    {
        Q_EMIT world.settings->objectWillChange();
        settle();
    }
};

} // namespace

TEST_F(InstructionsWarmUpTest, givesInstructionsWhenRecordingBegins)
{
    EXPECT_THAT(given, IsEmpty());
    begin();
    EXPECT_EQ(world.coordinator->state(), TalmoState::recording());
    EXPECT_THAT(given, ElementsAre(instructions()));
}

TEST_F(InstructionsWarmUpTest, instructionsBeginThoseOfEveryRequest)
{
    begin();
    ASSERT_THAT(given, SizeIs(1));
    const auto &settings = *world.settings;
    EXPECT_TRUE(buildInstructions(settings.words, true, settings.concise, settings.tone).startsWith(given.constFirst()))
        << "a request for a list has the same beginning";
}

TEST_F(InstructionsWarmUpTest, givesThemOncePerRecording)
{
    begin();
    world.onUpdate(u"hello"_s);
    world.onUpdate(u"hello world"_s);
    settle();
    EXPECT_THAT(given, SizeIs(1));
    end();
    begin();
    EXPECT_THAT(given, SizeIs(2));
}

TEST_F(InstructionsWarmUpTest, givesNothingWhileEditingIsOff)
{
    world.settings->ai = false;
    begin();
    EXPECT_THAT(given, IsEmpty());
    EXPECT_EQ(cancelled, 0);
}

TEST_F(InstructionsWarmUpTest, followsSettingsChangedWhileRecording)
{
    begin();
    world.settings->tone = TextTone::Polite;
    announceSettings();
    ASSERT_THAT(given, SizeIs(2));
    EXPECT_EQ(given.constLast(), instructions());
    world.settings->ai = false;
    announceSettings();
    EXPECT_EQ(cancelled, 1);
    world.settings->ai = true;
    announceSettings();
    EXPECT_THAT(given, SizeIs(3));
}

TEST_F(InstructionsWarmUpTest, continuesWhileTranscriptIsAwaited)
{
    const auto stopping = Completion<QString>::make();
    world.onStop = [stopping] { return stopping->future(); };
    begin();
    end();
    EXPECT_EQ(world.coordinator->state(), TalmoState::processing());
    EXPECT_EQ(cancelled, 0);
    stopping->finish(u"hello"_s);
    settle();
    EXPECT_EQ(world.coordinator->state(), TalmoState::idle());
    EXPECT_EQ(cancelled, 1);
}

TEST_F(InstructionsWarmUpTest, failedRecordingCancels)
{
    begin();
    world.onError(std::make_exception_ptr(Error(u"gone"_s)));
    settle();
    EXPECT_TRUE(world.coordinator->state().is(TalmoState::Case::Error));
    EXPECT_EQ(cancelled, 1);
}

TEST_F(InstructionsWarmUpTest, destructionCancels)
{
    begin();
    warmUp.reset();
    EXPECT_EQ(cancelled, 1);
}

TEST_F(InstructionsWarmUpTest, delaysNothing)
{
    begin();
    end();
    const auto observed = world.takeCalls();
    RecordingWorld alone;
    alone.coordinator->beginDictation();
    settle();
    alone.coordinator->endDictation();
    settle();
    EXPECT_EQ(observed, alone.takeCalls());
}

} // namespace talmo::test
