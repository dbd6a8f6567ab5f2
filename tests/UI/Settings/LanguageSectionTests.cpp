#include "UI/Settings/LanguageSection.h"

#include "Support/FakeLanguageSettings.h"
#include "UI/FindViews.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;

} // namespace

TEST(LanguageSection, offersWaysOutOfALanguageWithoutRecogniser)
{
    const auto settings = std::make_shared<FakeLanguageSettings>();
    LanguageSection section(settings);
    EXPECT_EQ(buttonNamed(section, u"Set it up"_s), nullptr);
    settings->wrong = u"Dictating in German needs another recogniser."_s;
    settings->change();
    settle();
    EXPECT_TRUE(shows(section, settings->wrong));
    buttonNamed(section, u"Set it up"_s)->click();
    buttonNamed(section, u"Use English for now"_s)->click();
    EXPECT_THAT(settings->calls, ElementsAre("set up", "use English"));
    settings->isToBeHad = false;
    settings->change();
    settle();
    EXPECT_FALSE(buttonNamed(section, u"Set it up"_s)->isEnabled());
}

} // namespace talmo::test
