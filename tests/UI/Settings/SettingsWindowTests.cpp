#include "UI/Settings/SettingsWindow.h"

#include "UI/ViewWorld.h"

#include <QTest>

#include <gmock/gmock.h>

namespace talmo::test {

TEST(SettingsWindow, opensCentredWithCurrentValues)
{
    ViewWorld world;
    const auto screens = std::make_shared<FakeScreens>();
    SettingsWindow window(world.context(), screens);
    world.authorization->microphone = 2;
    window.open();
    settle();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(world.permissions->microphoneStatus(), SimpleStatus::Denied);
    EXPECT_GE(world.availabilityRefreshes, 1);
    EXPECT_NEAR(window.geometry().center().x(), 500, 2);
    EXPECT_LE(window.height(), 800);
}

TEST(SettingsWindow, isNoHigherThanTheScreen)
{
    ViewWorld world;
    const auto screens = std::make_shared<FakeScreens>();
    screens->all = {{QRect(0, 0, 800, 480), QRect(0, 0, 800, 450)}};
    SettingsWindow window(world.context(), screens);
    window.open();
    EXPECT_LE(window.height(), 450);
}

TEST(SettingsWindow, escapeClosesIt)
{
    ViewWorld world;
    SettingsWindow window(world.context(), std::make_shared<FakeScreens>());
    window.open();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    window.open();
    EXPECT_TRUE(window.isVisible());
}

} // namespace talmo::test
