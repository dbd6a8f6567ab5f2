// Pure parts of what is seen on Linux.

#include "Control/ControlSocket.h"
#include "Platform/Linux/Session/DesktopAppearance.h"
#include "Platform/Linux/Session/TrayInk.h"
#include "Platform/Linux/System/SingleInstance.h"
#include "Platform/Linux/X11/Windows/ScreenStruts.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QTemporaryDir>

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

TEST(ScreenStruts, aBarAtTheBottomOfOneScreenLeavesTheOther)
{
    const auto bar = struts({0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 1919});
    EXPECT_EQ(withoutStruts(left, desktop, bar), QRect(0, 0, 1920, 1040));
    EXPECT_EQ(withoutStruts(right, desktop, bar), right);
}

TEST(ScreenStruts, depthCountsFromTheDesktopsEdgeNotTheScreens)
{
    // 56 pixels below the lower edge of the right screen are no screen at all.
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

TEST(ScreenStruts, nonsenseIsNotBelieved)
{
    EXPECT_TRUE(struts({1, 2, 3}).isEmpty());
    EXPECT_EQ(withoutStruts(left, desktop, struts({0, 0, 0, 5000, 0, 0, 0, 0, 0, 0, 0, 1919})), left);
    EXPECT_EQ(withoutStruts(left, desktop, struts({0, 0, 0, 0x80000000, 0, 0, 0, 0, 0, 0, 0, 1919})), left);
}

TEST(TrayInk, followsTheTrayThenItsGroundThenTheDesktop)
{
    const QList<quint32> fromTray{0xffff, 0x8080, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    const auto lightness = [](const QColor &colour) { return colour.lightness(); };
    EXPECT_EQ(trayInk(fromTray, QColor(Qt::white), {}, ColourScheme::Light), QColor::fromRgb(0xff, 0x80, 0));
    EXPECT_LT(lightness(trayInk({}, QColor(Qt::white), {}, ColourScheme::Dark)), 128);
    EXPECT_GT(lightness(trayInk({}, QColor(Qt::black), {}, ColourScheme::Light)), 128);
    EXPECT_GT(lightness(trayInk({}, std::nullopt, {u"ubuntu"_s, u"GNOME"_s}, ColourScheme::Light)), 128);
    EXPECT_LT(lightness(trayInk({}, std::nullopt, {u"KDE"_s}, ColourScheme::Light)), 128);
    EXPECT_GT(lightness(trayInk({}, std::nullopt, {u"KDE"_s}, ColourScheme::Dark)), 128);
}

TEST(DesktopAppearance, understandsThePortal)
{
    EXPECT_EQ(colourSchemeFromPortal(QVariant(1U)), ColourScheme::Dark);
    EXPECT_EQ(colourSchemeFromPortal(QVariant(2U)), ColourScheme::Light);
    EXPECT_EQ(colourSchemeFromPortal(QVariant(0U)), std::nullopt);
    EXPECT_EQ(colourSchemeFromPortal(QVariant(17U)), std::nullopt);
    EXPECT_EQ(colourSchemeFromPortal(QVariant(u"dark"_s)), std::nullopt);
    const auto wrapped = QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(QVariant(1U)))));
    EXPECT_EQ(colourSchemeFromPortal(wrapped), ColourScheme::Dark);
}

TEST(SingleInstance, thereIsOneFirstUntilItGoes)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"talmo.lock"_s);
    {
        const SingleInstance first(path);
        EXPECT_TRUE(first.isFirst());
        EXPECT_FALSE(SingleInstance(path).isFirst());
        EXPECT_FALSE(SingleInstance(path).isFirst());
    }
    EXPECT_TRUE(SingleInstance(path).isFirst());
}

TEST(SingleInstance, whereNoLockCanBeMadeTalmoStillRuns)
{
    EXPECT_TRUE(SingleInstance(u"/nonexistent/folder/talmo.lock"_s).isFirst());
}

TEST(ControlSocket, askingForTheSettingsIsNotAnInsertion)
{
    EXPECT_TRUE(ControlSocket::asksForSettings(ControlSocket::settingsRequest()));
    EXPECT_FALSE(ControlSocket::asksForSettings(ControlSocket::insertRequest(u"settings"_s)));
    EXPECT_FALSE(ControlSocket::textToInsert(ControlSocket::settingsRequest()).has_value());
    EXPECT_FALSE(ControlSocket::asksForSettings("garbage\n"));
}

} // namespace talmo::test
