#include "App/DictationRecovery.h"

#include "Support/FakePasteboard.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(LastDictation, isEmptyBeforeFirstDictation)
{
    const LastDictation last;
    EXPECT_EQ(last.text(), std::nullopt);
    EXPECT_EQ(last.rawText(), std::nullopt);
}

TEST(LastDictation, keepsCleanedTextAndRawTranscript)
{
    LastDictation last;
    last.begin();
    last.noteHeard(u"hello world"_s);
    last.noteCleaned(u"Hello world."_s);
    EXPECT_EQ(last.text(), u"Hello world."_s);
    EXPECT_EQ(last.rawText(), u"hello world"_s);
}

TEST(LastDictation, keepsRawTranscriptOfFailedDictation)
{
    LastDictation last;
    last.begin();
    last.noteHeard(u"one"_s);
    last.noteCleaned(u"One."_s);
    last.begin();
    last.noteHeard(u"two thr"_s);
    EXPECT_EQ(last.text(), u"two thr"_s);
}

TEST(LastDictation, emptyRecordingKeepsPreviousDictation)
{
    LastDictation last;
    last.begin();
    last.noteHeard(u"one"_s);
    last.noteCleaned(u"One."_s);
    last.begin();
    last.noteHeard(u" "_s);
    last.noteHeard(QString());
    EXPECT_EQ(last.text(), u"One."_s);
}

TEST(DictationRecovery, copiesLastDictationAsIfTheUserHad)
{
    const auto last = std::make_shared<LastDictation>();
    const auto pasteboard = std::make_shared<FakePasteboard>();
    DictationRecovery recovery(last, pasteboard, nullptr);
    recovery.copyLastText();
    EXPECT_TRUE(pasteboard->calls.empty()) << "there is none";
    last->begin();
    last->noteHeard(u"one"_s);
    last->noteCleaned(u"One."_s);
    recovery.copyLastText();
    EXPECT_EQ(pasteboard->calls, (std::vector<std::string>{"clear", "setString One."}));
}

} // namespace talmo::test
