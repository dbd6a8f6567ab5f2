#include "Main/DictationOptionsModel.h"

#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(DictationOptionsModel, spaceBetweenDictationsIsOnByDefault)
{
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    const DictationOptionsModel options(defaults);
    EXPECT_TRUE(options.isOn(DictationOption::SpaceBetween));
    defaults->store(u"linux.spaceBetweenDictations"_s, u"false"_s);
    EXPECT_TRUE(options.isOn(DictationOption::SpaceBetween)) << "a string is not a Boolean";
    defaults->store(u"linux.spaceBetweenDictations"_s, false);
    EXPECT_FALSE(options.isOn(DictationOption::SpaceBetween));
}

TEST(DictationOptionsModel, historyIsOffByDefault)
{
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    const DictationOptionsModel options(defaults);
    EXPECT_FALSE(options.isOn(DictationOption::KeepHistory));
    defaults->store(u"linux.keepHistory"_s, true);
    EXPECT_TRUE(options.isOn(DictationOption::KeepHistory));
}

TEST(DictationOptionsModel, soundsAreOffByDefault)
{
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    const DictationOptionsModel options(defaults);
    EXPECT_FALSE(options.isOn(DictationOption::Sounds));
    defaults->store(u"linux.sounds"_s, true);
    EXPECT_TRUE(options.isOn(DictationOption::Sounds));
}

TEST(DictationOptionsModel, storesAndAnnouncesChange)
{
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    DictationOptionsModel options(defaults);
    int changes = 0;
    QObject::connect(&options, &Observable::objectWillChange, [&changes] { ++changes; });
    options.setOn(DictationOption::SpaceBetween, false);
    EXPECT_FALSE(options.isOn(DictationOption::SpaceBetween));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(defaults->boolean(u"linux.spaceBetweenDictations"_s), false);
}

} // namespace talmo::test
