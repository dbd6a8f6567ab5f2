#include "Recognition/Text/SoundCorrection.h"

#include "Recognition/Text/OrdinaryWords.h"
#include "Support/Printing.h"

#include <QFile>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

QString corrected(const QString &text, const PersonalVocabulary &vocabulary)
{
    return SoundCorrection(vocabulary, &isOrdinaryWord).applied(text);
}

PersonalVocabulary words(const QStringList &list, const Pronunciation::SoundsLike &soundsLike = {})
{
    return {list, soundsLike};
}

} // namespace

TEST(SoundCorrection, writesMisheardWordAsUserDoes)
{
    const auto vocabulary = words({u"Talmo"_s, u"Nguyen"_s, u"Kubernetes"_s});
    EXPECT_EQ(corrected(u"I use tal mo every day."_s, vocabulary), u"I use Talmo every day."_s);
    EXPECT_EQ(corrected(u"Tallmo, please."_s, vocabulary), u"Talmo, please."_s);
    EXPECT_EQ(corrected(u"ask Doctor Noo Yen about it"_s, vocabulary), u"ask Doctor Nguyen about it"_s);
    EXPECT_EQ(corrected(u"deploy it to cubernetes"_s, vocabulary), u"deploy it to Kubernetes"_s);
}

TEST(SoundCorrection, leavesOrdinaryWordsAlone)
{
    const auto vocabulary = words({u"Talmo"_s, u"Nguyen"_s, u"Newton"_s, u"Jon"_s, u"Ada"_s, u"Rhode"_s, u"Iz"_s},
                                  {{u"nguyen"_s, u"win"_s}});
    for (const auto &text :
         {u"We win when we want to win."_s, u"A new ton of bricks is tall, mow the lawn."_s, u"John is on the road."_s,
          u"They aid a friend."_s, u"The tale of the almost tall man."_s, u"Total, tell me, also, Tim."_s}) {
        EXPECT_EQ(corrected(text, vocabulary), text);
    }
}

TEST(SoundCorrection, leavesOtherNamesAlone)
{
    const auto vocabulary = words({u"Talmo"_s, u"Meyer"_s, u"Kubernetes"_s});
    for (const auto &text : {u"Palmo and Tamla"_s, u"Mr Mayor"_s, u"Kubrick"_s, u"Talmud"_s, u"Taoiseach"_s}) {
        EXPECT_EQ(corrected(text, vocabulary), text);
    }
}

TEST(SoundCorrection, doesNotJoinAcrossPunctuation)
{
    EXPECT_EQ(corrected(u"tal, mo"_s, words({u"Talmo"_s})), u"tal, mo"_s);
}

TEST(SoundCorrection, takesPhraseThatUserNames)
{
    const auto vocabulary = words({u"PyTorch"_s}, {{u"pytorch"_s, u"pie torch"_s}});
    EXPECT_EQ(corrected(u"Install Pie Torch first."_s, vocabulary), u"Install PyTorch first."_s);
    EXPECT_EQ(corrected(u"Pie, torch and torch pie."_s, vocabulary), u"Pie, torch and torch pie."_s);
}

TEST(SoundCorrection, shortWordsMustSoundTheSame)
{
    const auto vocabulary = words({u"Nguyen"_s}, {{u"nguyen"_s, u"win"_s}});
    EXPECT_EQ(corrected(u"Mr Whinn said"_s, vocabulary), u"Mr Nguyen said"_s);
    EXPECT_EQ(corrected(u"Mr Wenn said"_s, vocabulary), u"Mr Wenn said"_s);
}

TEST(SoundCorrection, keepsTextWithoutVocabulary)
{
    EXPECT_EQ(corrected(u"  Tal mo -- as it was.\n"_s, {}), u"  Tal mo -- as it was.\n"_s);
}

TEST(OrdinaryWords, includesCommonWordsAndNamesButNoAbbreviations)
{
    ASSERT_TRUE(QFile::exists(u"/usr/share/dict/american-english-small"_s));
    for (const auto &word : {u"win"_s, u"walked"_s, u"newton"_s, u"john"_s, u"a"_s, u"2026"_s}) {
        EXPECT_TRUE(isOrdinaryWord(word)) << word.toStdString();
    }
    for (const auto &word : {u"talmo"_s, u"mo"_s, u"nguyin"_s}) {
        EXPECT_FALSE(isOrdinaryWord(word)) << word.toStdString();
    }
}

} // namespace talmo::test
