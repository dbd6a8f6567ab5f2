// The card's painting, compared pixel by pixel.

#include "UI/Style/Card.h"

#include "UI/DrawnView.h"
#include "UI/Style/Appearance.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace talmo::test {

namespace {

QPalette light()
{
    return Appearance::palette(ColourScheme::Light);
}

int alphaAt(const QImage &image, int x, int y)
{
    return image.pixelColor(x, y).alpha();
}

class CardTest : public testing::Test {
protected:
    /// A card of 200 × 100 pixels with a margin of 40.
    QImage painted(bool isTranslucent)
    {
        return drawn({280, 180}, [&](QPainter &painter) { Card::paint(painter, card, light(), isTranslucent); });
    }
    const QRect card{40, 40, 200, 100};
};

} // namespace

TEST_F(CardTest, isOpaqueWithoutTranslucency)
{
    const QImage image = painted(false);
    EXPECT_EQ(image.pixelColor(140, 90), light().color(QPalette::Window));
    EXPECT_EQ(alphaAt(image, 39, 90), 0) << "no shadow";
    EXPECT_EQ(alphaAt(image, 40, 90), 255);
    EXPECT_EQ(alphaAt(image, 239, 139), 0) << "rounded corner";
    EXPECT_EQ(image.pixelColor(140, 40), image.pixelColor(40, 90)) << "the same border on all sides";
    EXPECT_EQ(image.pixelColor(140, 139), image.pixelColor(239, 90));
    // The text colour at 8 % opacity on the surface colour.
    EXPECT_NEAR(image.pixelColor(140, 40).red(), 0.92 * 0xf4 + 0.08 * 0x1c, 2);
    EXPECT_EQ(image.pixelColor(140, 41), light().color(QPalette::Window)) << "the border is one pixel wide";
}

TEST_F(CardTest, everyPixelOfWindowWithoutTranslucencyIsCovered)
{
    const QImage image = painted(false);
    for (const QRect &row : Card::shape(card)) {
        for (int x = row.left(); x <= row.right(); ++x) {
            for (int y = row.top(); y <= row.bottom(); ++y) {
                ASSERT_EQ(alphaAt(image, x, y), 255) << x << ", " << y;
                ASSERT_GT(image.pixelColor(x, y).lightness(), 200) << "a dark dot at the corner";
            }
        }
    }
}

TEST_F(CardTest, isTranslucentWithSoftShadow)
{
    const QImage image = painted(true);
    EXPECT_NEAR(alphaAt(image, 140, 90), 0.9 * 255, 1);
    // The shadow's edge lies four pixels below the card's, where it has half its full opacity.
    const auto shadow = [](double distance) { return 255 * 0.34 * 0.5 * std::erfc(distance / 8); };
    EXPECT_NEAR(alphaAt(image, 140, 141), shadow(-2.5), 4);
    EXPECT_NEAR(alphaAt(image, 140, 150), shadow(6.5), 4);
    EXPECT_NEAR(alphaAt(image, 140, 36), shadow(7.5), 4);
    EXPECT_NEAR(alphaAt(image, 36, 90), shadow(3.5), 4);
    EXPECT_NEAR(alphaAt(image, 26, 90), shadow(13.5), 4);
    EXPECT_EQ(alphaAt(image, 140, 40 + 100 + 24 + 4), 0);
    EXPECT_EQ(alphaAt(image, 140, 40 - 24), 0);
    EXPECT_EQ(alphaAt(image, 36, 90), alphaAt(image, 279 - 36, 90)) << "the same on both sides";
    int before = 255;
    for (int y = 140; y < 168; ++y) {
        EXPECT_LE(alphaAt(image, 140, y), before);
        before = alphaAt(image, 140, y);
    }
}

TEST_F(CardTest, shadowMatchesCardAtEveryPixel)
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
                // Distance from the rounded rectangle, shifted down by four pixels.
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

TEST_F(CardTest, restoresPainterState)
{
    for (const bool isTranslucent : {true, false}) {
        QImage image(280, 180, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        Card::paint(painter, card, light(), isTranslucent);
        EXPECT_FALSE(painter.hasClipping());
        EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
    }
}

TEST_F(CardTest, shapeIsSymmetric)
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
    EXPECT_LE(different, 8) << "a pixel at each corner may round either way";
}

TEST_F(CardTest, shapeHasRoundCorners)
{
    const QRegion shape = Card::shape(card);
    EXPECT_EQ(shape.boundingRect(), card);
    EXPECT_TRUE(shape.contains(card.center()));
    for (const QPoint corner : {card.topLeft(), card.topRight(), card.bottomLeft(), card.bottomRight()}) {
        EXPECT_FALSE(shape.contains(corner));
    }
    // The edge is straight beyond the 14-pixel radius; the diagonal is cut by a few pixels.
    EXPECT_TRUE(shape.contains(card.topLeft() + QPoint(16, 0)));
    EXPECT_FALSE(shape.contains(card.topLeft() + QPoint(2, 2)));
    EXPECT_TRUE(shape.contains(card.topLeft() + QPoint(5, 5)));
    int missing = 0;
    for (int x = 0; x < 20; ++x) {
        for (int y = 0; y < 20; ++y) {
            missing += shape.contains(card.topLeft() + QPoint(x, y)) ? 0 : 1;
        }
    }
    EXPECT_NEAR(missing, 14 * 14 * 0.2146, 6) << "the area between a circle of radius 14 and its square";
    EXPECT_EQ(Card::cornerRadius, 14);
    EXPECT_EQ(Card::shadowMargin, 24);
}

TEST(Card, hasShadowOnlyWhenTranslucent)
{
    const QRect card(40, 40, 200, 80);
    const auto painted = [&card](bool isTranslucent) {
        QImage image(280, 160, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        Card::paint(painter, card, QPalette(Qt::white), isTranslucent);
        return image;
    };
    const QImage translucent = painted(true);
    EXPECT_GT(translucent.pixelColor(140, 125).alpha(), 20); // The shadow below…
    EXPECT_EQ(translucent.pixelColor(140, 155).alpha(), 0);  // …has an end.
    EXPECT_LT(translucent.pixelColor(140, 80).alpha(), 255);
    const QImage solid = painted(false);
    EXPECT_EQ(solid.pixelColor(140, 80).alpha(), 255);
    EXPECT_EQ(solid.pixelColor(140, 125).alpha(), 0);
    EXPECT_LT(solid.pixelColor(40, 40).alpha(), 30);

    const QRegion shape = Card::shape(card);
    EXPECT_FALSE(shape.contains(card.topLeft()));
    EXPECT_FALSE(shape.contains(card.bottomRight()));
    EXPECT_TRUE(shape.contains(card.center()));
    EXPECT_EQ(shape.boundingRect(), card);
}

} // namespace talmo::test
