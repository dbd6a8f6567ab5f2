#include "Recognition/Text/ReadableText.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(ReadableText, lowersLettersOnlyIfToldTo)
{
    const ReadableText cased(ReadableText::Letters::AsWritten, PersonalSpelling({}), nullptr);
    const ReadableText capitals(ReadableText::Letters::Lower, PersonalSpelling({u"NASA"_s}), nullptr);
    EXPECT_EQ(cased.of(u"NASA"_s), u"NASA"_s);
    EXPECT_EQ(capitals.of(u"NASA AND IBM"_s), u"NASA and ibm"_s);
}

TEST(ReadableText, spellsWordsBeforeItCorrectsThem)
{
    const PersonalVocabulary vocabulary{{u"CloudFormation"_s}, {}};
    const auto correction = std::make_shared<SoundCorrection>(vocabulary, [](const QString &) { return false; });
    const ReadableText text(ReadableText::Letters::AsWritten, PersonalSpelling(vocabulary.words), correction);
    EXPECT_EQ(text.of(u"use cloud formation"_s), u"use CloudFormation"_s);
    EXPECT_EQ(text.of(u"use clowd formation"_s), u"use CloudFormation"_s);
}

} // namespace talmo::test
