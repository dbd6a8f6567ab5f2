#include "Platform/Linux/Session/TrayIconColour.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

namespace talmo::test {

namespace {

const QStringList states{u"mic.circle"_s, u"waveform.circle.fill"_s, u"ellipsis.circle"_s, u"exclamationmark.circle"_s,
                         u"pause.circle"_s};
/// The panels of XFCE, Plasma, MATE and Cinnamon with their own and with popular themes: light, medium and dark.
const QList<QColor> panels{QColor(0xff, 0xff, 0xff), QColor(0xef, 0xf0, 0xf1), QColor(0xd6, 0xd2, 0xd0),
                           QColor(0xa0, 0xa0, 0xa0), QColor(0x80, 0x80, 0x80), QColor(0x5f, 0x6a, 0x72),
                           QColor(0x31, 0x36, 0x3b), QColor(0x2f, 0x2f, 0x2f), QColor(0x00, 0x00, 0x00)};

/// How many pixels of the icon have the contrast of a shape with the panel.
int seenPixels(const QIcon &icon, int size, const QColor &panel)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(panel);
    QPainter painter(&image);
    painter.drawPixmap(0, 0, icon.pixmap(size, size));
    painter.end();
    int seen = 0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            seen += Appearance::contrast(image.pixelColor(x, y), panel) >= Appearance::shapeContrast ? 1 : 0;
        }
    }
    return seen;
}

/// A quarter of what is seen of black on white: strokes have faint edges, and of a filled symbol the rim and what is
/// left open in it may be all that has contrast.
int enoughPixels(const QString &state, int size)
{
    return seenPixels(Symbol::icon(state, QColor(Qt::black)), size, Qt::white) / 4;
}

} // namespace

TEST(TrayIconColour, prefersTrayColoursThenBackgroundThenDesktop)
{
    const QList<quint32> fromTray{0xffff, 0x8080, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    const auto lightness = [](const Symbol::Inks &inks) { return inks.ink.lightness(); };
    EXPECT_EQ(trayInks(fromTray, QColor(Qt::black), {}, ColourScheme::Light).ink, QColor::fromRgb(0xff, 0x80, 0));
    EXPECT_EQ(trayInks(fromTray, std::nullopt, {}, ColourScheme::Light).ink, QColor::fromRgb(0xff, 0x80, 0));
    EXPECT_LT(lightness(trayInks(fromTray, QColor(Qt::white), {}, ColourScheme::Dark)), 128); // Not seen there.
    EXPECT_LT(lightness(trayInks({}, QColor(Qt::white), {}, ColourScheme::Dark)), 128);
    EXPECT_GT(lightness(trayInks({}, QColor(Qt::black), {}, ColourScheme::Light)), 128);
    EXPECT_GT(lightness(trayInks({}, std::nullopt, {u"ubuntu"_s, u"GNOME"_s}, ColourScheme::Light)), 128);
    EXPECT_LT(lightness(trayInks({}, std::nullopt, {u"KDE"_s}, ColourScheme::Light)), 128);
    EXPECT_GT(lightness(trayInks({}, std::nullopt, {u"KDE"_s}, ColourScheme::Dark)), 128);
}

TEST(TrayIconColour, iconIsSeenOnEveryPanelOfUnknownColour)
{
    for (const auto scheme : {ColourScheme::Light, ColourScheme::Dark}) {
        const auto inks = trayInks({}, std::nullopt, {u"KDE"_s}, scheme);
        for (const auto &state : states) {
            const QIcon icon = Symbol::icon(state, inks);
            for (const int size : {16, 22, 24, 32, 48}) {
                for (const auto &panel : panels) {
                    EXPECT_GE(seenPixels(icon, size, panel), enoughPixels(state, size))
                        << qPrintable(state) << " of " << size << " on " << qPrintable(panel.name());
                }
            }
        }
    }
}

TEST(TrayIconColour, iconIsSeenOnPanelOfKnownColour)
{
    for (const auto &panel : panels) {
        const auto inks = trayInks({}, panel, {}, ColourScheme::Light);
        EXPECT_FALSE(inks.disc);
        for (const auto &state : states) {
            EXPECT_GE(seenPixels(Symbol::icon(state, inks), 22, panel), enoughPixels(state, 22))
                << qPrintable(state) << " on " << qPrintable(panel.name());
        }
    }
}

} // namespace talmo::test
