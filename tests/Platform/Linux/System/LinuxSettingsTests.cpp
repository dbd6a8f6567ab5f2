#include "Platform/Linux/System/LinuxSettings.h"

#include "Platform/Linux/Keys/StandInKeys.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"

#include <gmock/gmock.h>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(LinuxSettings, areEmptyUnlessSet)
{
    const auto settings = LinuxSettings::read(MemoryUserDefaults());
    EXPECT_EQ(settings.languageModel.address, QString());
    EXPECT_EQ(settings.languageModel.modelName, QString());
    EXPECT_EQ(settings.standInKeys, QStringList());
    EXPECT_EQ(settings.dictationLanguage, QString());
}

TEST(LinuxSettings, haveKeysOfTheirOwn)
{
    MemoryUserDefaults defaults;
    defaults.store(u"linux.languageModelAddress"_s, u"http://127.0.0.1:9000"_s);
    defaults.store(u"linux.languageModelName"_s, u"small"_s);
    defaults.store(u"linux.standInKeys"_s, QStringList{u"F13"_s});
    defaults.store(u"linux.dictationLanguage"_s, u"en_GB"_s);
    const auto settings = LinuxSettings::read(defaults);
    EXPECT_EQ(settings.languageModel.address, u"http://127.0.0.1:9000"_s);
    EXPECT_EQ(settings.languageModel.modelName, u"small"_s);
    EXPECT_EQ(settings.standInKeys, QStringList{u"F13"_s});
    EXPECT_EQ(settings.dictationLanguage, u"en_GB"_s);
}

TEST(SystemLocaleSource, theUsersLanguageComesBeforeTheDesktops)
{
    EXPECT_EQ(SystemLocaleSource(u"en_GB"_s).currentIdentifier(), u"en_GB"_s);
}

TEST(StandInKeys, rightCtrlIsTheUsualOne)
{
    const auto symbols = standInKeySymbols({});
    EXPECT_THAT(symbols, ElementsAre(XKB_KEY_Control_R, XKB_KEY_XF86WakeUp, XKB_KEY_F13));
    EXPECT_EQ(keyDisplayName(symbols.first()), u"Right Ctrl"_s);
}

TEST(StandInKeys, areNamedAsTheServerNamesThem)
{
    EXPECT_THAT(standInKeySymbols({u"F14"_s, u"pause"_s, u"F14"_s}), ElementsAre(XKB_KEY_F14, XKB_KEY_Pause));
    EXPECT_EQ(keyDisplayName(XKB_KEY_F14), u"F14"_s);
    EXPECT_EQ(keyDisplayName(XKB_KEY_ISO_Level3_Shift), u"AltGr"_s);
}

TEST(StandInKeys, namesOfNoKeyAndKeysThatTypeAreLeftOut)
{
    const RecordingLog log;
    EXPECT_THAT(standInKeySymbols({u"Contrl_R"_s, u"a"_s, u"space"_s, u"Return"_s, u"F14"_s}),
                ElementsAre(XKB_KEY_F14));
    EXPECT_THAT(log.lines(), SizeIs(4));
    EXPECT_TRUE(log.lines().at(0).contains(u"Contrl_R"_s));
    EXPECT_THAT(standInKeySymbols({u"a"_s}), SizeIs(3)) << "a key is needed, so the usual ones hold";
}

} // namespace talmo::test
