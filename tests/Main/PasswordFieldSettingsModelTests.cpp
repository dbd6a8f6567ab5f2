#include "Main/PasswordFieldSettingsModel.h"

#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(PasswordFieldSettingsModel, isEnabledByDefault)
{
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    PasswordFieldSettingsModel settings(defaults);
    EXPECT_TRUE(settings.isGuarded());
    defaults->store(u"linux.guardPasswordFields"_s, u"false"_s);
    EXPECT_TRUE(settings.isGuarded()) << "a string is not a Boolean";
    defaults->store(u"linux.guardPasswordFields"_s, false);
    EXPECT_FALSE(settings.isGuarded());
}

TEST(PasswordFieldSettingsModel, storesAndAnnouncesChange)
{
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    PasswordFieldSettingsModel settings(defaults);
    int changes = 0;
    QObject::connect(&settings, &Observable::objectWillChange, [&changes] { ++changes; });
    settings.setGuarded(false);
    EXPECT_FALSE(settings.isGuarded());
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(defaults->boolean(u"linux.guardPasswordFields"_s), false);
}

} // namespace talmo::test
