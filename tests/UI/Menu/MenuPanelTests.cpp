#include "UI/Menu/MenuPanel.h"

#include "UI/AccessibleView.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QAbstractButton>

namespace talmo::test {

namespace {

class MenuPanelTest : public testing::Test {
protected:
    MenuPanelTest()
        : panel(world.context(), panels.factory(), screens, focus,
                [this](MenuAction action) { done.push_back(action); })
    {
    }

    void choose(const QString &title)
    {
        auto *button = accessibleWidget(*panels.last->content, QAccessible::Button, title);
        ASSERT_NE(button, nullptr);
        qobject_cast<QAbstractButton *>(button)->click();
        settle();
    }

    ViewWorld world;
    FakePanels panels;
    std::shared_ptr<FakeScreens> screens = std::make_shared<FakeScreens>();
    std::shared_ptr<FakeFocus> focus = std::make_shared<FakeFocus>(panels.calls);
    std::vector<MenuAction> done;
    MenuPanel panel;
};

const Screen screen{QRect(0, 0, 1000, 800), QRect(0, 24, 1000, 776)};
constexpr QSize size(300, 200);

} // namespace

TEST(MenuPanelFrame, opensBelowTopIconWithinScreen)
{
    EXPECT_EQ(menuPanelFrame(screen, QRect(500, 0, 24, 24), {}, size), QRect(362, 30, 300, 200));
    EXPECT_EQ(menuPanelFrame(screen, QRect(970, 0, 24, 24), {}, size), QRect(694, 30, 300, 200));
    EXPECT_EQ(menuPanelFrame(screen, QRect(0, 0, 24, 24), {}, size), QRect(6, 30, 300, 200));
}

TEST(MenuPanelFrame, opensAboveBottomIcon)
{
    const Screen bar{QRect(0, 0, 1000, 800), QRect(0, 0, 1000, 770)};
    EXPECT_EQ(menuPanelFrame(bar, QRect(900, 773, 24, 24), {}, size), QRect(694, 564, 300, 200));
}

TEST(MenuPanelFrame, withoutIconOpensInPointersCorner)
{
    EXPECT_EQ(menuPanelFrame(screen, std::nullopt, {990, 10}, size).topRight(), QPoint(993, 30));
    EXPECT_EQ(menuPanelFrame(screen, std::nullopt, {10, 10}, size).topLeft(), QPoint(6, 30));
    EXPECT_EQ(menuPanelFrame(screen, std::nullopt, {990, 790}, size).bottomRight(), QPoint(993, 793));
    EXPECT_EQ(menuPanelFrame(screen, std::nullopt, {10, 790}, size).bottomLeft(), QPoint(6, 793));
}

TEST(MenuPanelFrame, worksOnSecondScreen)
{
    const Screen second{QRect(1000, 200, 640, 480), QRect(1000, 200, 640, 480)};
    EXPECT_EQ(menuPanelFrame(second, QRect(1600, 200, 24, 24), {}, size), QRect(1334, 230, 300, 200));
    EXPECT_EQ(menuPanelFrame(second, std::nullopt, {1630, 670}, size).bottomRight(), QPoint(1633, 673));
}

TEST_F(MenuPanelTest, opensAsPanelThatTakesKeyboard)
{
    panel.open(QRect(900, 0, 24, 24));
    EXPECT_TRUE(panel.isOpen());
    EXPECT_TRUE(panels.last->options.canBecomeKey);
    EXPECT_THAT(panels.calls, testing::ElementsAre("remember focus", "orderFrontRegardless"));
    EXPECT_EQ(panels.last->frames.back().y(), 30);
}

TEST_F(MenuPanelTest, secondClickOnIconClosesIt)
{
    panel.toggle(QRect(900, 0, 24, 24));
    panel.toggle(QRect(900, 0, 24, 24));
    EXPECT_FALSE(panel.isOpen());
    panel.toggle(QRect(900, 0, 24, 24));
    EXPECT_TRUE(panel.isOpen());
    EXPECT_EQ(panels.made, 1);
}

TEST_F(MenuPanelTest, rowActsAfterKeyboardIsReturned)
{
    panel.open({});
    choose(u"Start Recording"_s);
    EXPECT_FALSE(panel.isOpen());
    EXPECT_TRUE(done.empty());
    focus->back->finish();
    settle();
    EXPECT_THAT(done, testing::ElementsAre(MenuAction::BeginDictation));
}

TEST_F(MenuPanelTest, closingWaitsForKeyboardUnlessAlreadyClosed)
{
    EXPECT_TRUE(panel.close().isFinished());
    panel.open({});
    const auto closed = panel.close();
    EXPECT_FALSE(closed.isFinished());
    EXPECT_FALSE(panel.isOpen());
    focus->back->finish();
    EXPECT_TRUE(closed.isFinished());
}

TEST_F(MenuPanelTest, opensWithCurrentStateAndRefreshesPermissions)
{
    panel.open({});
    panels.last->dismiss();
    world.authorization->microphone = 0;
    panel.open({});
    EXPECT_EQ(accessibleNames(*panels.last->content, QAccessible::StaticText),
              (QStringList{u"Talmo needs permissions"_s, u"Microphone access needed"_s}));
}

TEST_F(MenuPanelTest, growsDownwardsInPlace)
{
    panel.open(QRect(900, 0, 24, 24));
    const QRect before = panels.last->frame();
    world.setPermissions(false, false, false);
    const QRect after = panels.last->frame();
    EXPECT_EQ(after.topLeft(), before.topLeft());
    EXPECT_GT(after.height(), before.height());
}

} // namespace talmo::test
