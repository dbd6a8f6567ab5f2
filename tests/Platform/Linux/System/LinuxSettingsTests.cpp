#include "Platform/Linux/System/LinuxSettings.h"

#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(LinuxSettings, areEmptyUnlessSet)
{
    const auto settings = LinuxSettings::read(MemoryUserDefaults());
    EXPECT_EQ(settings.languageModel.address, QString());
    EXPECT_EQ(settings.languageModel.modelName, QString());
    EXPECT_EQ(settings.standInKeys, QStringList());
    EXPECT_TRUE(settings.readKeyboards);
    EXPECT_EQ(settings.dictationLanguage, QString());
}

TEST(LinuxSettings, readTheirOwnKeys)
{
    MemoryUserDefaults defaults;
    defaults.store(u"linux.languageModelAddress"_s, u"http://127.0.0.1:9000"_s);
    defaults.store(u"linux.languageModelName"_s, u"small"_s);
    defaults.store(u"linux.standInKeys"_s, QStringList{u"F13"_s});
    defaults.store(u"linux.readKeyboards"_s, false);
    defaults.store(u"linux.dictationLanguage"_s, u"en_GB"_s);
    const auto settings = LinuxSettings::read(defaults);
    EXPECT_EQ(settings.languageModel.address, u"http://127.0.0.1:9000"_s);
    EXPECT_EQ(settings.languageModel.modelName, u"small"_s);
    EXPECT_EQ(settings.standInKeys, QStringList{u"F13"_s});
    EXPECT_FALSE(settings.readKeyboards);
    EXPECT_EQ(settings.dictationLanguage, u"en_GB"_s);
}

} // namespace talmo::test
