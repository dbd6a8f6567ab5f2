#include "UI/Settings/HotkeyRows.h"

#include "Support/FakeHotkeySettings.h"
#include "UI/AccessibleView.h"
#include "UI/FindViews.h"
#include "UI/ViewWorld.h"

#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;

class HotkeyRowsTest : public testing::Test {
protected:
    HotkeyRowsTest()
    {
        rows.setAttribute(Qt::WA_DontShowOnScreen);
        rows.show();
        settle();
    }
    std::shared_ptr<FakeHotkeySettings> settings = std::make_shared<FakeHotkeySettings>();
    HotkeyRows rows{settings};
};

} // namespace

TEST_F(HotkeyRowsTest, waitsForAKeyUntilPressedAgain)
{
    buttonNamed(rows, u"Press the key you want"_s)->click();
    settle();
    EXPECT_THAT(settings->calls, ElementsAre("replace"));
    EXPECT_FALSE(buttonNamed(rows, u"Add another"_s)->isEnabled());
    buttonNamed(rows, u"Press a key…"_s)->click();
    settle();
    EXPECT_EQ(settings->waiting, std::nullopt);
    buttonNamed(rows, u"Add another"_s)->click();
    EXPECT_THAT(settings->calls, ElementsAre("replace", "add"));
}

TEST_F(HotkeyRowsTest, theKeyWaitedForDoesNotActInTheWindow)
{
    auto *button = buttonNamed(rows, u"Press the key you want"_s);
    button->click();
    settle();
    QTest::keyClick(button, Qt::Key_Space); // Would press the button again.
    settle();
    EXPECT_NE(settings->waiting, std::nullopt);
    rows.hide();
    EXPECT_EQ(settings->waiting, std::nullopt);
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_THAT(settings->calls, ElementsAre("replace", "replace"));
}

TEST_F(HotkeyRowsTest, oneOfSeveralKeysCanBeRemoved)
{
    EXPECT_EQ(buttonNamed(rows, u"Remove"_s), nullptr);
    settings->all.append({u"F9"_s, u"F9"_s});
    settings->change();
    settle();
    auto *remove = dynamic_cast<QPushButton *>(accessibleWidget(rows, QAccessible::Button, u"Remove F9"_s));
    ASSERT_NE(remove, nullptr);
    remove->click();
    settle();
    EXPECT_THAT(settings->calls, ElementsAre("remove F9"));
}

TEST_F(HotkeyRowsTest, offersAKeyToThoseWithoutTheDefault)
{
    settings->suggested = HotkeySettings::Key{u"F9"_s, u"F9"_s};
    settings->wrong = u"The settings file names a key “Contrl_R”."_s;
    settings->change();
    settle();
    EXPECT_TRUE(shows(rows, u"No Right Ctrl on your keyboard?"_s));
    EXPECT_TRUE(shows(rows, settings->wrong));
    buttonNamed(rows, u"Use F9"_s)->click();
    EXPECT_THAT(settings->calls, ElementsAre("use F9"));
}

} // namespace talmo::test
