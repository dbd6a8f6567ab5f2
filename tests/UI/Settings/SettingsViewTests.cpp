#include "UI/Settings/SettingsView.h"

#include "UI/AccessibleView.h"
#include "UI/ViewWorld.h"

#include <QListWidget>
#include <QTest>

#include <gmock/gmock.h>

namespace talmo::test {

TEST(SettingsView, hasThreeTabsInOrder)
{
    ViewWorld world;
    SettingsView view(world.context());
    view.show();
    EXPECT_EQ(accessibleNames(view, QAccessible::PageTab), (QStringList{u"General"_s, u"Dictionary"_s, u"Privacy"_s}));
    const auto *bar = view.findChild<QTabBar *>();
    EXPECT_EQ(bar->tabData(0).toString(), u"gearshape"_s);
    EXPECT_EQ(bar->tabData(1).toString(), u"text.book.closed"_s);
    EXPECT_EQ(bar->tabData(2).toString(), u"lock.shield"_s);
}

TEST(SettingsView, keyboardSwitchesTabs)
{
    ViewWorld world;
    SettingsView view(world.context());
    view.show();
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    auto *bar = view.findChild<QTabBar *>();
    QTest::keyClick(&view, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(bar->currentIndex(), 1);
    EXPECT_TRUE(view.findChild<QListWidget *>()->isVisible());
    QTest::keyClick(&view, Qt::Key_PageUp, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(bar->currentIndex(), 2);
    bar->setFocus();
    QTest::keyClick(bar, Qt::Key_Left);
    EXPECT_EQ(bar->currentIndex(), 1);
}

} // namespace talmo::test
