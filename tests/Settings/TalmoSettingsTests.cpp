#include "Settings/TalmoSettings.h"

#include "Base/Error.h"
#include "Settings/TextTone.h"
#include "Support/FakeLoginItem.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Records its calls; registering fails on demand.
class TalmoSettingsTest : public testing::Test {
protected:
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<FakeLoginItem> loginItem = std::make_shared<FakeLoginItem>();
};

const QStringList freshWords{u"Talmo"_s, u"Terraform"_s, u"CloudFormation"_s, u"Kubernetes"_s};

} // namespace

TEST_F(TalmoSettingsTest, freshInstallHasDefaults)
{
    const TalmoSettings settings(defaults, loginItem);
    EXPECT_TRUE(settings.aiCleanupEnabled());
    EXPECT_FALSE(settings.conciseTextEnabled());
    EXPECT_EQ(settings.textTone(), TextTone::Standard);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(settings.dictionaryWords(), freshWords);
    EXPECT_EQ(settings.hotkeyDisplayName(), u"fn"_s);
    EXPECT_THAT(defaults->writes, IsEmpty());
    EXPECT_THAT(loginItem->calls, IsEmpty());
}

TEST_F(TalmoSettingsTest, startsFromStoredValues)
{
    defaults->store(u"talmo.aiCleanupEnabled"_s, false);
    defaults->store(u"talmo.conciseTextEnabled"_s, true);
    defaults->store(u"talmo.textTone"_s, u"polite"_s);
    defaults->store(u"talmo.launchAtLogin"_s, true);
    defaults->store(u"talmo.dictionaryWords"_s, QStringList());
    defaults->store(u"talmo.hotkeyDisplayName"_s, u"F13"_s);
    const TalmoSettings settings(defaults, loginItem);
    EXPECT_FALSE(settings.aiCleanupEnabled());
    EXPECT_TRUE(settings.conciseTextEnabled());
    EXPECT_EQ(settings.textTone(), TextTone::Polite);
    EXPECT_TRUE(settings.launchAtLogin());
    EXPECT_EQ(settings.dictionaryWords(), QStringList()) << "a saved empty list stays empty";
    EXPECT_EQ(settings.hotkeyDisplayName(), u"F13"_s);
    EXPECT_THAT(defaults->writes, IsEmpty());
    EXPECT_THAT(loginItem->calls, IsEmpty()) << "the preference alone registers nothing";
}

TEST_F(TalmoSettingsTest, wrongTypesFallBackToDefaults)
{
    defaults->store(u"talmo.aiCleanupEnabled"_s, u"false"_s);
    defaults->store(u"talmo.conciseTextEnabled"_s, u"true"_s);
    defaults->store(u"talmo.textTone"_s, true);
    defaults->store(u"talmo.launchAtLogin"_s, QStringList{u"true"_s});
    defaults->store(u"talmo.dictionaryWords"_s, u"Talmo"_s);
    defaults->store(u"talmo.hotkeyDisplayName"_s, false);
    const TalmoSettings settings(defaults, loginItem);
    EXPECT_TRUE(settings.aiCleanupEnabled());
    EXPECT_FALSE(settings.conciseTextEnabled());
    EXPECT_EQ(settings.textTone(), TextTone::Standard);
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(settings.dictionaryWords(), freshWords);
    EXPECT_EQ(settings.hotkeyDisplayName(), u"fn"_s);
}

TEST_F(TalmoSettingsTest, unknownToneReadsAsStandardAndStaysStored)
{
    defaults->store(u"talmo.textTone"_s, u"casual"_s);
    TalmoSettings settings(defaults, loginItem);
    EXPECT_EQ(settings.textTone(), TextTone::Standard);
    EXPECT_EQ(defaults->string(u"talmo.textTone"_s), u"casual"_s);
    settings.setTextTone(TextTone::Friendly);
    EXPECT_EQ(defaults->string(u"talmo.textTone"_s), u"friendly"_s);
}

TEST_F(TalmoSettingsTest, everySetterWritesThrough)
{
    TalmoSettings settings(defaults, loginItem);
    settings.setAiCleanupEnabled(false);
    settings.setConciseTextEnabled(true);
    settings.setTextTone(TextTone::Professional);
    settings.setLaunchAtLogin(true);
    settings.setDictionaryWords({u"One"_s, u"Two"_s});
    settings.setHotkeyDisplayName(u"F13"_s);
    EXPECT_THAT(defaults->writes,
                ElementsAre(Pair(u"talmo.aiCleanupEnabled"_s, DefaultsValue(false)),
                            Pair(u"talmo.conciseTextEnabled"_s, DefaultsValue(true)),
                            Pair(u"talmo.textTone"_s, DefaultsValue(u"professional"_s)),
                            Pair(u"talmo.launchAtLogin"_s, DefaultsValue(true)),
                            Pair(u"talmo.dictionaryWords"_s, DefaultsValue(QStringList{u"One"_s, u"Two"_s})),
                            Pair(u"talmo.hotkeyDisplayName"_s, DefaultsValue(u"F13"_s))));
    const TalmoSettings next(defaults, loginItem);
    EXPECT_FALSE(next.aiCleanupEnabled());
    EXPECT_EQ(next.textTone(), TextTone::Professional);
    EXPECT_EQ(next.dictionaryWords(), (QStringList{u"One"_s, u"Two"_s}));
}

TEST_F(TalmoSettingsTest, equalValueIsAnnouncedStoredAndWritten)
{
    TalmoSettings settings(defaults, loginItem);
    std::vector<bool> seen;
    QObject::connect(&settings, &Observable::objectWillChange, &settings,
                     [&] { seen.push_back(settings.conciseTextEnabled()); });
    settings.setConciseTextEnabled(true);
    settings.setConciseTextEnabled(true);
    EXPECT_THAT(seen, ElementsAre(false, true));
    EXPECT_EQ(defaults->writes.size(), 2U);
}

TEST_F(TalmoSettingsTest, addsTrimmedWordsOnce)
{
    TalmoSettings settings(defaults, loginItem);
    settings.addDictionaryWord(u"  PostgreSQL\n"_s);
    EXPECT_THAT(defaults->takeWrites(), ElementsAre(Pair(u"talmo.dictionaryWords"_s,
                                                         DefaultsValue(freshWords + QStringList{u"PostgreSQL"_s}))));
    settings.addDictionaryWord(u"PostgreSQL"_s);
    settings.addDictionaryWord(u"   "_s);
    settings.addDictionaryWord(QString());
    settings.addDictionaryWord(u"Kubernetes"_s);
    EXPECT_THAT(defaults->takeWrites(), IsEmpty());
    settings.addDictionaryWord(u"postgresql"_s);
    EXPECT_EQ(settings.dictionaryWords(), freshWords + (QStringList{u"PostgreSQL"_s, u"postgresql"_s}));
}

TEST_F(TalmoSettingsTest, composedAndDecomposedAreOneWord)
{
    TalmoSettings settings(defaults, loginItem);
    settings.addDictionaryWord(u"Caf\u00E9"_s);
    const auto before = settings.dictionaryWords();
    settings.addDictionaryWord(u"Cafe\u0301"_s);
    EXPECT_EQ(settings.dictionaryWords(), before);
}

TEST_F(TalmoSettingsTest, updatesLoginItemOnlyWhenItDiffers)
{
    TalmoSettings settings(defaults, loginItem);
    struct Row {
        bool wanted;
        LoginItemStatus status;
        std::vector<std::string> calls;
    };
    const std::vector<Row> rows{
        {true, LoginItemStatus::NotRegistered, {"register"}},    {true, LoginItemStatus::Enabled, {}},
        {true, LoginItemStatus::RequiresApproval, {"register"}}, {true, LoginItemStatus::NotFound, {"register"}},
        {false, LoginItemStatus::Enabled, {"unregister"}},       {false, LoginItemStatus::NotRegistered, {}},
        {false, LoginItemStatus::RequiresApproval, {}},          {false, LoginItemStatus::NotFound, {}}};
    for (const auto &row : rows) {
        loginItem->answer = row.status;
        loginItem->calls.clear();
        settings.updateLaunchAtLogin(row.wanted);
        EXPECT_EQ(loginItem->calls, row.calls) << row.wanted << ' ' << int(row.status);
    }
    EXPECT_THAT(defaults->writes, IsEmpty()) << "the preference is set by its own setter";
}

TEST_F(TalmoSettingsTest, failingLoginItemIsLoggedAndPreferenceStays)
{
    const RecordingLog log;
    TalmoSettings settings(defaults, loginItem);
    settings.setLaunchAtLogin(true);
    loginItem->isBroken = true;
    settings.updateLaunchAtLogin(true);
    EXPECT_TRUE(settings.launchAtLogin());
    EXPECT_THAT(log.lines(), ElementsAre(u"general error: Failed to update launch-at-login: no room"_s));
    EXPECT_THAT(log.formats(), ElementsAre(u"Failed to update launch-at-login: %@"_s));
}

TEST_F(TalmoSettingsTest, sharedInstanceIsCreatedOnceOnFirstUse)
{
    int made = 0;
    TalmoSettings::setSharedFactory([&] {
        ++made;
        return std::make_shared<TalmoSettings>(defaults, loginItem);
    });
    EXPECT_EQ(made, 0);
    EXPECT_EQ(TalmoSettings::shared(), TalmoSettings::shared());
    EXPECT_EQ(made, 1);
    TalmoSettings::releaseShared();
    TalmoSettings::setSharedFactory({});
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
