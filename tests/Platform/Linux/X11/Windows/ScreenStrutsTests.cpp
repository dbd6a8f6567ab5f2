#include "Platform/Linux/X11/Windows/ScreenStruts.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace talmo::test {

namespace {

constexpr QSize desktop(1920 + 1280, 1080);
const QRect left(0, 0, 1920, 1080);
const QRect right(1920, 0, 1280, 1024);

QList<Strut> struts(std::initializer_list<quint32> numbers)
{
    return strutsFromProperty(QList<quint32>(numbers));
}

} // namespace

TEST(ScreenStruts, barOnOneScreenLeavesTheOtherUnchanged)
{
    const auto bar = struts({0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 1919});
    EXPECT_EQ(withoutStruts(left, desktop, bar), QRect(0, 0, 1920, 1040));
    EXPECT_EQ(withoutStruts(right, desktop, bar), right);
}

TEST(ScreenStruts, depthCountsFromDesktopEdgeNotScreenEdge)
{
    // The right screen is 56 pixels shorter than the desktop.
    const auto bar = struts({0, 0, 0, 56 + 30, 0, 0, 0, 0, 0, 0, 1920, 3199});
    EXPECT_EQ(withoutStruts(right, desktop, bar), QRect(1920, 0, 1280, 994));
    EXPECT_EQ(withoutStruts(left, desktop, bar), left);
}

TEST(ScreenStruts, severalAddUp)
{
    auto all = struts({64, 0, 0, 0, 0, 1079, 0, 0, 0, 0, 0, 0});
    all += struts({0, 0, 24, 0, 0, 0, 0, 0, 0, 3199, 0, 0});
    all += struts({0, 100, 0, 0, 0, 0, 0, 1023, 0, 0, 0, 0});
    EXPECT_EQ(withoutStruts(left, desktop, all), QRect(64, 24, 1856, 1056));
    EXPECT_EQ(withoutStruts(right, desktop, all), QRect(1920, 24, 1180, 1000));
}

TEST(ScreenStruts, ignoresImplausibleValues)
{
    EXPECT_TRUE(struts({1, 2, 3}).isEmpty());
    EXPECT_EQ(withoutStruts(left, desktop, struts({0, 0, 0, 5000, 0, 0, 0, 0, 0, 0, 0, 1919})), left);
    EXPECT_EQ(withoutStruts(left, desktop, struts({0, 0, 0, 0x80000000, 0, 0, 0, 0, 0, 0, 0, 1919})), left);
}

} // namespace talmo::test
