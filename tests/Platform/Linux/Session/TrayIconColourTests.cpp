#include "Platform/Linux/Session/TrayIconColour.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(TrayIconColour, prefersTrayColoursThenBackgroundThenDesktop)
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

} // namespace talmo::test
