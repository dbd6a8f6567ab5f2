#include "App/Trace/DictationTrace.h"

#include "Support/ManualClock.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using Stage = DictationTrace::Stage;

namespace {

class DictationTraceTest : public testing::Test {
protected:
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    DictationTrace trace{clock};

    void note(Stage stage, Duration after)
    {
        clock->advance(after);
        trace.note(stage);
    }
    /// The lines without the header, with single spaces.
    QStringList lines() const
    {
        QStringList all = trace.table().value_or(QString()).split(QLatin1Char('\n')).mid(1);
        for (auto &line : all) {
            line = line.simplified();
        }
        return all;
    }
};

} // namespace

TEST_F(DictationTraceTest, nothingBeforeFirstDictation)
{
    EXPECT_EQ(trace.table(), std::nullopt);
    note(Stage::Pressed, 1s);
    EXPECT_EQ(trace.table(), std::nullopt) << "a press alone is no dictation";
}

TEST_F(DictationTraceTest, listsStagesWithTimesSinceFirstAndSincePrevious)
{
    note(Stage::Pressed, 5s);
    note(Stage::Recording, 150ms);
    note(Stage::Released, 2s);
    note(Stage::LastAudio, 12500us);
    EXPECT_THAT(lines(), ElementsAre(u"key pressed 0.0 0.0"_s, u"recording 150.0 150.0"_s,
                                     u"key released 2150.0 2000.0"_s, u"last audio 2162.5 12.5"_s));
}

TEST_F(DictationTraceTest, tableNamesEveryStageInAlignedColumns)
{
    for (const auto stage : {Stage::Pressed, Stage::Recording, Stage::Released, Stage::LastAudio, Stage::FinalText,
                             Stage::Cleaned, Stage::ClipboardClaimed, Stage::Chord, Stage::Read, Stage::Restored}) {
        note(stage, 10ms);
    }
    EXPECT_EQ(
        trace.table(),
        QStringList({u"                              ms      + ms"_s, u"key pressed                  0.0       0.0"_s,
                     u"recording                   10.0      10.0"_s, u"key released                20.0      10.0"_s,
                     u"last audio                  30.0      10.0"_s, u"text recognised             40.0      10.0"_s,
                     u"text cleaned up             50.0      10.0"_s, u"text on the clipboard       60.0      10.0"_s,
                     u"paste shortcut posted       70.0      10.0"_s, u"text read                   80.0      10.0"_s,
                     u"clipboard restored          90.0      10.0"_s})
            .join(u'\n'));
}

TEST_F(DictationTraceTest, tapKeepsTraceOfLastDictation)
{
    note(Stage::Pressed, 1s);
    note(Stage::Recording, 150ms);
    const auto before = trace.table();
    note(Stage::Pressed, 1s);
    EXPECT_EQ(trace.table(), before);
}

TEST_F(DictationTraceTest, recordingWithoutPressBeginsTrace)
{
    note(Stage::Pressed, 1s);
    note(Stage::Recording, 150ms);
    note(Stage::Recording, 10s);
    EXPECT_THAT(lines(), ElementsAre(u"recording 0.0 0.0"_s));
}

TEST_F(DictationTraceTest, ignoresStagesOutOfOrder)
{
    note(Stage::Recording, 1s);
    note(Stage::ClipboardClaimed, 1s);
    note(Stage::Chord, 1s);
    note(Stage::Released, 1s);
    note(Stage::Released, 1s);
    EXPECT_THAT(lines(), ElementsAre(u"recording 0.0 0.0"_s, u"key released 3000.0 3000.0"_s))
        << "an insertion of another program, and a second release";
}

} // namespace talmo::test
