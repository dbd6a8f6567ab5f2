#include "Recognition/Text/RecognisedText.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(RecognisedText, keepsLettersAsModelWroteThem)
{
    EXPECT_EQ(normaliseTranscript(u"NASA and IBM"_s), u"NASA and IBM"_s);
    EXPECT_EQ(normaliseTranscript(u"NASA."_s), u"NASA."_s);
    EXPECT_EQ(normaliseTranscript(u"Hello, World."_s), u"Hello, World."_s);
    EXPECT_EQ(normaliseTranscript(u" spaces around "_s), u"spaces around"_s);
}

TEST(RecognisedText, removesPunctuationAroundCommands)
{
    EXPECT_EQ(normaliseTranscript(u"Buy milk, new line, eggs."_s), u"Buy milk new line eggs."_s);
    EXPECT_EQ(normaliseTranscript(u"Thanks. New paragraph. Best regards."_s), u"Thanks. New paragraph Best regards."_s);
    EXPECT_EQ(normaliseTranscript(u"New line."_s), u"New line"_s);
    EXPECT_EQ(normaliseTranscript(u"Milk and eggs, as a list."_s), u"Milk and eggs as a list"_s);
    EXPECT_EQ(normaliseTranscript(u"As bullet points: milk, eggs."_s), u"As bullet points milk, eggs."_s);
    EXPECT_EQ(normaliseTranscript(u"A renewed newline, I say."_s), u"A renewed newline, I say."_s);
}

TEST(RecognisedText, spellsCustomVocabularyAsUserDoes)
{
    const PersonalSpelling spelling({u"CloudFormation"_s, u"Rust"_s, u"Rust Belt"_s, u"C++"_s, u"  "_s, u"Zo\u00eb"_s});
    EXPECT_EQ(spelling.applied(u"cloud formation and cloudformation in rust"_s),
              u"CloudFormation and CloudFormation in Rust"_s);
    EXPECT_EQ(spelling.applied(u"the rust belt, trusted"_s), u"the Rust Belt, trusted"_s);
    EXPECT_EQ(spelling.applied(u"c++ it is"_s), u"C++ it is"_s);
    EXPECT_EQ(spelling.applied(u"ZO\u00cb"_s), u"Zo\u00eb"_s);
    EXPECT_TRUE(spelling.spokenForms().contains(u"cloud formation"_s));
    EXPECT_EQ(PersonalSpelling({}).applied(u"as it was"_s), u"as it was"_s);
}

} // namespace talmo::test
