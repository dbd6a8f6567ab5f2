#include "UI/Settings/MicrophoneSection.h"

#include "Support/FakeMicrophoneSettings.h"
#include "UI/FindViews.h"
#include "UI/Style/LevelBar.h"
#include "UI/ViewWorld.h"

#include <QComboBox>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;

class MicrophoneSectionTest : public testing::Test {
protected:
    void show(MicrophoneSection::Listening listening)
    {
        section = std::make_unique<MicrophoneSection>(settings, listening);
        section->setAttribute(Qt::WA_DontShowOnScreen);
        section->show();
        settle();
    }
    std::shared_ptr<FakeMicrophoneSettings> settings = std::make_shared<FakeMicrophoneSettings>();
    std::unique_ptr<MicrophoneSection> section;
};

} // namespace

TEST_F(MicrophoneSectionTest, choosesAMicrophone)
{
    show(MicrophoneSection::Listening::WhenAsked);
    auto *picker = section->findChild<QComboBox *>();
    ASSERT_EQ(picker->count(), 3);
    picker->setCurrentIndex(2);
    Q_EMIT picker->activated(2);
    EXPECT_THAT(settings->calls, ElementsAre("choose headset"));
}

TEST_F(MicrophoneSectionTest, settingsListenOnlyWhenAsked)
{
    show(MicrophoneSection::Listening::WhenAsked);
    EXPECT_EQ(settings->followers, 1);
    EXPECT_FALSE(settings->isOn);
    buttonNamed(*section, u"Test"_s)->click();
    settle();
    EXPECT_TRUE(settings->isOn);
    settings->beLoud(0.6);
    EXPECT_EQ(childOf<LevelBar>(*section)->level(), 0.6);
    section->hide();
    EXPECT_FALSE(settings->isOn);
    EXPECT_EQ(settings->followers, 0);
}

TEST_F(MicrophoneSectionTest, welcomeListensWhileShown)
{
    show(MicrophoneSection::Listening::WhileShown);
    EXPECT_TRUE(settings->isOn);
    EXPECT_EQ(buttonNamed(*section, u"Test"_s), nullptr);
    section->hide();
    EXPECT_FALSE(settings->isOn);
}

TEST_F(MicrophoneSectionTest, showsProblemAndOffersNoTestWithoutMicrophone)
{
    settings->wrong = u"No microphone was found."_s;
    settings->isThere = false;
    show(MicrophoneSection::Listening::WhenAsked);
    EXPECT_TRUE(shows(*section, settings->wrong));
    EXPECT_FALSE(buttonNamed(*section, u"Test"_s)->isEnabled());
}

} // namespace talmo::test
