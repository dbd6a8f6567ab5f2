// Colours, and what is painted by hand, to the pixel.

#include "UI/Style/Appearance.h"

#include "UI/DrawnView.h"
#include "UI/Settings/KeyCap.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Style/Card.h"
#include "UI/Style/Separator.h"
#include "UI/Style/Symbol.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/Style/TintedLabel.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace talmo::test {

namespace {

QPalette light()
{
    return Appearance::palette(ColourScheme::Light);
}

QPalette dark()
{
    return Appearance::palette(ColourScheme::Dark);
}

QColor faded(QColor colour, float alpha)
{
    colour.setAlphaF(alpha);
    return colour;
}

QColor text(const QWidget &view)
{
    return view.palette().color(QPalette::WindowText);
}

/// A line as thin and light as those around keys and groups.
void paintFrame(QPainter &painter, const QWidget &view, const QColor &ground, qreal radius)
{
    painter.setPen(QPen(faded(text(view), 0.12F), 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(0.5, 0.5, view.width() - 1, view.height() - 1), radius, radius);
}

int alphaAt(const QImage &image, int x, int y)
{
    return image.pixelColor(x, y).alpha();
}

} // namespace

TEST(Appearance, hasItsSizes)
{
    EXPECT_EQ(Appearance::titleSize, 13);
    EXPECT_EQ(Appearance::detailSize, 12);
    EXPECT_EQ(Appearance::captionSize, 11);
    const QFont font = Appearance::font(17, QFont::Bold);
    EXPECT_EQ(font.pixelSize(), 17);
    EXPECT_EQ(font.weight(), QFont::Bold);
    EXPECT_EQ(font.family(), QGuiApplication::font().family());
    EXPECT_EQ(Appearance::font(11).weight(), QFont::Normal);
}

TEST(Appearance, judgesAPaletteByItsWindows)
{
    EXPECT_TRUE(Appearance::isDark(dark()));
    EXPECT_FALSE(Appearance::isDark(light()));
    EXPECT_EQ(Appearance::scheme(dark()), ColourScheme::Dark);
    EXPECT_EQ(Appearance::scheme(light()), ColourScheme::Light);
    QPalette grey = light();
    grey.setColor(QPalette::Window, Qt::gray);
    grey.setColor(QPalette::WindowText, Qt::gray);
    EXPECT_FALSE(Appearance::isDark(grey));
}

TEST(Appearance, dimsTheTextsColour)
{
    for (const auto &palette : {light(), dark()}) {
        const QColor ink = palette.color(QPalette::WindowText);
        EXPECT_EQ(Appearance::secondary(palette), faded(ink, 0.66F));
        EXPECT_EQ(Appearance::hairline(palette), faded(ink, 0.12F));
        EXPECT_EQ(Appearance::groupSurface(palette), faded(ink, 0.045F));
    }
}

TEST(Appearance, warnsAndApprovesInLegibleColours)
{
    EXPECT_EQ(Appearance::orange(dark()), QColor(255, 163, 58));
    EXPECT_EQ(Appearance::orange(light()), QColor(179, 84, 0));
    EXPECT_EQ(Appearance::green(dark()), QColor(76, 217, 100));
    EXPECT_EQ(Appearance::green(light()), QColor(27, 127, 55));
}

TEST(Appearance, hasAPaletteForEachScheme)
{
    const auto names = [](const QPalette &palette) {
        QStringList colours;
        for (const auto role : {QPalette::Window, QPalette::WindowText, QPalette::Base, QPalette::AlternateBase,
                                QPalette::Text, QPalette::Button, QPalette::ButtonText, QPalette::Highlight,
                                QPalette::HighlightedText, QPalette::Link, QPalette::ToolTipBase, QPalette::ToolTipText,
                                QPalette::Light, QPalette::Mid, QPalette::Dark, QPalette::BrightText}) {
            colours.append(palette.color(role).name().mid(1));
        }
        return colours.join(QLatin1Char(' '));
    };
    EXPECT_EQ(names(light()),
              u"f4f4f6 1c1c1e ffffff f4f4f6 1c1c1e fafafb 1c1c1e 4b5bdc ffffff 4b5bdc f4f4f6 1c1c1e ffffff "
              u"d6d6da b4b4ba ffffff"_s);
    EXPECT_EQ(names(dark()),
              u"242528 f0f0f2 1b1c1f 242528 f0f0f2 3a3b40 f0f0f2 5b6df0 ffffff 5b6df0 242528 f0f0f2 4a4b50 "
              u"1e1e21 121214 ffffff"_s);
    for (const auto &palette : {light(), dark()}) {
        EXPECT_EQ(palette.color(QPalette::PlaceholderText), Appearance::secondary(palette));
        for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
            EXPECT_EQ(palette.color(QPalette::Disabled, role), faded(palette.color(QPalette::WindowText), 0.4F));
        }
    }
}

class CardTest : public testing::Test {
protected:
    /// A card of 200 by 100 with 40 pixels around it.
    QImage painted(bool isTranslucent)
    {
        return drawn({280, 180}, [&](QPainter &painter) { Card::paint(painter, card, light(), isTranslucent); });
    }
    const QRect card{40, 40, 200, 100};
};

TEST_F(CardTest, isSolidWithoutTranslucency)
{
    const QImage image = painted(false);
    EXPECT_EQ(image.pixelColor(140, 90), light().color(QPalette::Window));
    EXPECT_EQ(alphaAt(image, 39, 90), 0) << "no shadow";
    EXPECT_EQ(alphaAt(image, 40, 90), 255);
    EXPECT_EQ(alphaAt(image, 239, 139), 0) << "the corner is round";
    EXPECT_EQ(image.pixelColor(140, 40), image.pixelColor(40, 90)) << "the same border on all sides";
    EXPECT_EQ(image.pixelColor(140, 139), image.pixelColor(239, 90));
    // The text's colour at 8 % on the surface's.
    EXPECT_NEAR(image.pixelColor(140, 40).red(), 0.92 * 0xf4 + 0.08 * 0x1c, 2);
    EXPECT_EQ(image.pixelColor(140, 41), light().color(QPalette::Window)) << "the border is one pixel wide";
}

TEST_F(CardTest, shinesThroughAndThrowsASoftShadow)
{
    const QImage image = painted(true);
    EXPECT_NEAR(alphaAt(image, 140, 90), 0.9 * 255, 1);
    // Its edge lies four pixels lower than the card's; there it is half as dark as within.
    const auto shadow = [](double distance) { return 255 * 0.34 * 0.5 * std::erfc(distance / 8); };
    EXPECT_NEAR(alphaAt(image, 140, 141), shadow(-2.5), 4);
    EXPECT_NEAR(alphaAt(image, 140, 150), shadow(6.5), 4);
    EXPECT_NEAR(alphaAt(image, 140, 36), shadow(7.5), 4);
    EXPECT_NEAR(alphaAt(image, 36, 90), shadow(3.5), 4);
    EXPECT_NEAR(alphaAt(image, 26, 90), shadow(13.5), 4);
    EXPECT_EQ(alphaAt(image, 140, 40 + 100 + 24 + 4), 0);
    EXPECT_EQ(alphaAt(image, 140, 40 - 24), 0);
    EXPECT_EQ(alphaAt(image, 36, 90), alphaAt(image, 279 - 36, 90)) << "the same at both sides";
    int before = 255;
    for (int y = 140; y < 168; ++y) {
        EXPECT_LE(alphaAt(image, 140, y), before);
        before = alphaAt(image, 140, y);
    }
}

TEST_F(CardTest, theShadowIsThatOfTheCardAtEveryPixel)
{
    for (const qreal ratio : {1.0, 2.0}) {
        QImage image((QSizeF(280, 180) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        Card::paint(painter, card, light(), true);
        painter.end();
        int wrong = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QPointF point((x + 0.5) / ratio, (y + 0.5) / ratio);
                if (QRectF(card).adjusted(-1, -1, 1, 1).contains(point)) {
                    continue;
                }
                // From the rounded rectangle, four pixels lower, to the point.
                const double beyondX = std::max(std::abs(point.x() - 140) - (100 - 14), 0.0);
                const double beyondY = std::max(std::abs(point.y() - 94) - (50 - 14), 0.0);
                const double distance = std::hypot(beyondX, beyondY) - 14;
                const double expected = 255 * 0.34 * 0.5 * std::erfc(distance / 8);
                wrong += std::abs(alphaAt(image, x, y) - expected) > 4 ? 1 : 0;
            }
        }
        EXPECT_LE(wrong, 40) << "at ratio " << ratio << "; stretching rounds a few pixels elsewhere";
    }
}

TEST_F(CardTest, leavesThePainterAsItWas)
{
    for (const bool isTranslucent : {true, false}) {
        QImage image(280, 180, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        Card::paint(painter, card, light(), isTranslucent);
        EXPECT_FALSE(painter.hasClipping());
        EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
    }
}

TEST_F(CardTest, itsShapeIsTheSameOnAllSides)
{
    const QRegion shape = Card::shape(card);
    int different = 0;
    for (int y = 0; y < card.height(); ++y) {
        for (int x = 0; x < card.width(); ++x) {
            const bool isInside = shape.contains(card.topLeft() + QPoint(x, y));
            const QPoint opposite = card.bottomRight() - QPoint(x, y);
            different += shape.contains(opposite) != isInside ? 1 : 0;
            different += shape.contains(QPoint(opposite.x(), card.top() + y)) != isInside ? 1 : 0;
        }
    }
    EXPECT_LE(different, 8) << "a pixel at each corner may be rounded to the other side";
}

TEST_F(CardTest, itsShapeHasRoundCorners)
{
    const QRegion shape = Card::shape(card);
    EXPECT_EQ(shape.boundingRect(), card);
    EXPECT_TRUE(shape.contains(card.center()));
    for (const QPoint corner : {card.topLeft(), card.topRight(), card.bottomLeft(), card.bottomRight()}) {
        EXPECT_FALSE(shape.contains(corner));
    }
    // Straight beyond 14 pixels and a little, and cut by a few pixels on the diagonal.
    EXPECT_TRUE(shape.contains(card.topLeft() + QPoint(16, 0)));
    EXPECT_FALSE(shape.contains(card.topLeft() + QPoint(2, 2)));
    EXPECT_TRUE(shape.contains(card.topLeft() + QPoint(5, 5)));
    int missing = 0;
    for (int x = 0; x < 20; ++x) {
        for (int y = 0; y < 20; ++y) {
            missing += shape.contains(card.topLeft() + QPoint(x, y)) ? 0 : 1;
        }
    }
    EXPECT_NEAR(missing, 14 * 14 * 0.2146, 6) << "what a circle of 14 leaves of a square";
    EXPECT_EQ(Card::cornerRadius, 14);
    EXPECT_EQ(Card::shadowMargin, 24);
}

TEST(KeyCap, isDrawnAsAKey)
{
    KeyCap cap;
    cap.setText(u"<b>F13</b>"_s);
    EXPECT_EQ(cap.textFormat(), Qt::PlainText);
    EXPECT_EQ(cap.font().pixelSize(), 12);
    EXPECT_EQ(cap.font().weight(), QFont::Medium);
    EXPECT_EQ(margins(cap.contentsMargins()), u"9,3,9,4"_s);
    cap.setText({});
    cap.resize(60, 24);
    EXPECT_TRUE(drawn(cap) == drawn(cap.size(), [&](QPainter &painter) {
                    paintFrame(painter, cap, cap.palette().color(QPalette::Base), 5);
                }));
}

TEST(Separator, isAHairlineInItsMiddle)
{
    Separator line(11, 8);
    line.resize(100, 11);
    EXPECT_EQ(line.height(), 11);
    EXPECT_TRUE(drawn(line) == drawn(line.size(), [&](QPainter &painter) {
                    painter.fillRect(QRect(8, 5, 84, 1), faded(text(line), 0.12F));
                }));
}

TEST(SettingsSection, standsOnASurface)
{
    SettingsSection section;
    section.addCaption({});
    section.resize(200, 60);
    section.show();
    auto *surface = section.layout()->itemAt(0)->widget();
    ASSERT_NE(surface, nullptr);
    EXPECT_TRUE(drawn(*surface) == drawn(surface->size(), [&](QPainter &painter) {
                    paintFrame(painter, *surface, faded(text(*surface), 0.045F), 8);
                }));
}

TEST(SymbolLabel, paintsItsSymbolInItsColour)
{
    SymbolLabel label(u"power"_s, &Appearance::orange, 16);
    EXPECT_EQ(label.size(), QSize(16, 16));
    const auto expected = [&](const QString &symbol, const QColor &colour) {
        return drawn(label.size(),
                     [&](QPainter &painter) { painter.drawPixmap(0, 0, Symbol::pixmap(symbol, 16, colour, 1)); });
    };
    EXPECT_TRUE(drawn(label) == expected(u"power"_s, Appearance::orange(label.palette())));
    label.setSymbol(u"return"_s, &Appearance::green);
    EXPECT_TRUE(drawn(label) == expected(u"return"_s, Appearance::green(label.palette())));
    EXPECT_EQ(label.symbol(), u"return"_s);
}

TEST(TintedLabel, paintsItsWordsInItsColour)
{
    const auto *caption = TintedLabel::caption(u"<b>words</b>"_s);
    EXPECT_EQ(caption->textFormat(), Qt::PlainText);
    EXPECT_TRUE(caption->wordWrap());
    EXPECT_EQ(caption->font().pixelSize(), 11);
    delete caption;
    TintedLabel label(Appearance::font(13), [](const QPalette &) { return QColor(Qt::red); });
    label.setText(u"several words that do not fit into one line"_s);
    label.resize(120, 80);
    EXPECT_TRUE(drawn(label) == drawn(label.size(), [&](QPainter &painter) {
                    painter.setFont(label.font());
                    painter.setPen(Qt::red);
                    painter.drawText(QRect(0, 0, 120, 80), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap,
                                     label.text());
                }));
}

} // namespace talmo::test
