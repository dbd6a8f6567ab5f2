// talmoctl as users and scripts see it: the program, its output, errors and exit status.

#include "SpokenText.h"
#include "Support/Printing.h"
#include "talmoctl/TalmoctlFixture.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::HasSubstr;

class TalmoctlTest : public TalmoctlFixture {};

} // namespace

TEST_F(TalmoctlTest, worksInPipes)
{
    expectOutput(shell(u"echo 'one new line two' | talmoctl format | tail -n 1"_s), "Two.\n");
    EXPECT_EQ(shell(u"set -o pipefail; talmoctl instructions | head -c 1 >/dev/null; echo"_s).errors, "");
    const auto full = shell(u"talmoctl instructions > /dev/full"_s);
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(full.errors, HasSubstr("cannot write to stdout"));
    const auto closed = shell(u"talmoctl format <&-"_s);
    EXPECT_EQ(closed.status, 1);
    EXPECT_THAT(closed.errors, HasSubstr("cannot read stdin"));
}

TEST_F(TalmoctlTest, damagedSettingsDoNotFail)
{
    QFile file(folder.filePath(u"talmo/settings.json"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("{\"linux.languageModelAddress\": \"of");
    file.close();
    const auto result = talmoctl({u"format"_s}, "hello");
    EXPECT_EQ(result.output, "Hello.\n");
    EXPECT_THAT(result.errors, HasSubstr("damaged"));
}

TEST_F(TalmoctlTest, transcribesFile)
{
    const QString wav = testbed::speak(u"hello world"_s, folder.path());
    expectOutput(talmoctl({u"transcribe"_s, wav}), "hello world\n");
    const auto live = talmoctl({u"transcribe"_s, u"--live"_s, wav});
    EXPECT_EQ(live.status, 0) << live.errors;
    const auto lines = QString::fromStdString(live.output).split(u'\n', Qt::SkipEmptyParts);
    EXPECT_GT(lines.size(), 1) << live.output;
    EXPECT_EQ(lines.last(), u"hello world"_s);
}

TEST_F(TalmoctlTest, untranscribableFileIsAnError)
{
    const QString wav = testbed::speak(u"hello world"_s, folder.path());
    EXPECT_THAT(talmoctl({u"transcribe"_s, folder.filePath(u"none.wav"_s)}).errors, HasSubstr("none.wav"));
    QFile text(folder.filePath(u"text.wav"_s));
    ASSERT_TRUE(text.open(QFile::WriteOnly));
    text.write("no sound at all");
    text.close();
    EXPECT_EQ(talmoctl({u"transcribe"_s, text.fileName()}).status, 1);
    const auto language = talmoctl({u"transcribe"_s, u"--language"_s, u"tlh"_s, wav});
    EXPECT_EQ(language.status, 1);
    EXPECT_THAT(language.errors, HasSubstr("isn't supported for on-device transcription"));
    const QString silence = testbed::speak(u"."_s, folder.path());
    EXPECT_THAT(talmoctl({u"transcribe"_s, silence}).errors, HasSubstr("No speech detected."));
}

TEST_F(TalmoctlTest, insertReportsMissingDisplay)
{
    environment.remove(u"DISPLAY"_s);
    const auto result = talmoctl({u"insert"_s}, "hello");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("No X display could be opened"));
}

TEST_F(TalmoctlTest, incompleteModelCommandIsUnknown)
{
    expectUsageError(talmoctl({u"model"_s}), "unknown command");
    expectUsageError(talmoctl({u"model"_s, u"paint"_s}), "unknown command “model paint”");
}

TEST_F(TalmoctlTest, modelUseReportsFullDisk)
{
    // A file size limit fails like a full disk. The ignored signal stays ignored in the child process.
    const auto full = shell(u"trap '' XFSZ; ulimit -f 0; talmoctl model use embedded"_s);
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.output, "");
    EXPECT_THAT(full.errors, HasSubstr("could not be saved"));
    expectOutput(talmoctl({u"model"_s, u"use"_s, u"embedded"_s}), "Using embedded from the next recording on.\n");
}

TEST_F(TalmoctlTest, modelRemoveRefusesLinksAndPaths)
{
    const QString models = folder.filePath(u"data/talmo/models"_s);
    QDir().mkpath(models);
    QDir().mkpath(folder.filePath(u"outside/precious"_s));
    ASSERT_TRUE(QFile::link(folder.filePath(u"outside"_s), models + u"/linked"_s));
    for (const auto &name : {u"linked"_s, u"../../../outside"_s, folder.filePath(u"outside"_s)}) {
        EXPECT_EQ(talmoctl({u"model"_s, u"remove"_s, name}).status, 1) << name.toStdString();
    }
    EXPECT_TRUE(QFile::exists(folder.filePath(u"outside/precious"_s)));
}

} // namespace talmo::test
