#include "Settings/TalmoSettings.h"

#include "Settings/TextTone.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

TEST(TalmoSettings, freshValues)
{
    const TalmoSettings settings;
    EXPECT_TRUE(settings.aiCleanupEnabled());
    EXPECT_FALSE(settings.conciseTextEnabled());
    EXPECT_EQ(settings.textTone(), TextTone::Standard);
    EXPECT_EQ(settings.dictionaryWords(),
              (QStringList{u"Talmo"_s, u"Terraform"_s, u"CloudFormation"_s, u"Kubernetes"_s}));
}

TEST(TalmoSettings, announcesBeforeItStoresAlsoAnEqualValue)
{
    TalmoSettings settings;
    std::vector<bool> seen;
    QObject::connect(&settings, &Observable::objectWillChange, &settings,
                     [&] { seen.push_back(settings.conciseTextEnabled()); });
    settings.setConciseTextEnabled(true);
    settings.setConciseTextEnabled(true);
    EXPECT_THAT(seen, testing::ElementsAre(false, true));
}

TEST(TalmoSettings, addsTrimmedWordsOnce)
{
    TalmoSettings settings;
    const auto before = settings.dictionaryWords();
    settings.addDictionaryWord(u"  PostgreSQL\n"_s);
    settings.addDictionaryWord(u"PostgreSQL"_s);
    settings.addDictionaryWord(u"   "_s);
    settings.addDictionaryWord(u"Kubernetes"_s);
    EXPECT_EQ(settings.dictionaryWords(), before + QStringList{u"PostgreSQL"_s});
    settings.addDictionaryWord(u"postgresql"_s);
    EXPECT_EQ(settings.dictionaryWords().size(), before.size() + 2);
}

TEST(TalmoSettings, composedAndDecomposedAreOneWord)
{
    TalmoSettings settings;
    settings.addDictionaryWord(u"Caf\u00E9"_s);
    const auto before = settings.dictionaryWords();
    settings.addDictionaryWord(u"Cafe\u0301"_s);
    EXPECT_EQ(settings.dictionaryWords(), before);
}

TEST(TextTone, hasRawValuesAndNamesInOrder)
{
    QStringList raw;
    QStringList names;
    for (const TextTone tone : allTextTones) {
        raw.append(rawValue(tone));
        names.append(displayName(tone));
        EXPECT_EQ(textToneFromRawValue(rawValue(tone)), tone);
    }
    EXPECT_EQ(raw, (QStringList{u"standard"_s, u"professional"_s, u"friendly"_s, u"polite"_s}));
    EXPECT_EQ(names, (QStringList{u"Standard"_s, u"Professional"_s, u"Friendly"_s, u"Polite"_s}));
    EXPECT_FALSE(textToneFromRawValue(u"casual"_s));
}

} // namespace talmo::test
