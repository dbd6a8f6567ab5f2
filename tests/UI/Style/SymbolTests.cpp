#include "UI/Style/Symbol.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

/// The mean opacity of the image, from 0 to 1.
double ink(const QPixmap &pixmap)
{
    const QImage image = pixmap.toImage();
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            sum += image.pixelColor(x, y).alphaF();
        }
    }
    return sum / (image.width() * image.height());
}

} // namespace

TEST(Symbol, everyUsedSymbolIsDrawn)
{
    for (const auto &name : {u"mic.circle"_s,
                             u"waveform.circle.fill"_s,
                             u"ellipsis.circle"_s,
                             u"exclamationmark.circle"_s,
                             u"pause.circle"_s,
                             u"play.fill"_s,
                             u"mic.fill"_s,
                             u"stop.fill"_s,
                             u"sparkles"_s,
                             u"text.cursor"_s,
                             u"exclamationmark.triangle.fill"_s,
                             u"exclamationmark.triangle"_s,
                             u"gearshape"_s,
                             u"power"_s,
                             u"text.book.closed"_s,
                             u"lock.shield"_s,
                             u"list.bullet"_s,
                             u"return"_s,
                             u"arrow.turn.down.left"_s,
                             u"checkmark.shield.fill"_s,
                             u"checkmark.circle.fill"_s,
                             u"plus"_s,
                             u"minus"_s}) {
        EXPECT_TRUE(Symbol::exists(name)) << name.toStdString();
        for (const int size : {16, 22, 32}) {
            const double covered = ink(Symbol::pixmap(name, size, Qt::black));
            EXPECT_GT(covered, 0.03) << name.toStdString() << " at " << size;
            EXPECT_LT(covered, 0.8) << name.toStdString() << " at " << size;
        }
    }
}

TEST(Symbol, isDrawnInRequestedColour)
{
    const QImage image = Symbol::pixmap(u"stop.fill"_s, 16, QColor(200, 30, 60)).toImage();
    EXPECT_EQ(image.pixelColor(8, 8), QColor(200, 30, 60));
}

TEST(Symbol, usesFullResolutionOnHighDpiScreen)
{
    const QPixmap pixmap = Symbol::pixmap(u"gearshape"_s, 16, Qt::black, 2);
    EXPECT_EQ(pixmap.size(), QSize(32, 32));
    EXPECT_EQ(pixmap.deviceIndependentSize(), QSizeF(16, 16));
}

TEST(Symbol, menuBarSymbolsDifferInShape)
{
    const QStringList names{u"mic.circle"_s, u"waveform.circle.fill"_s, u"ellipsis.circle"_s,
                            u"exclamationmark.circle"_s, u"pause.circle"_s};
    for (const auto &one : names) {
        for (const auto &other : names) {
            if (one < other) {
                const QImage first = Symbol::pixmap(one, 22, Qt::black).toImage();
                const QImage second = Symbol::pixmap(other, 22, Qt::black).toImage();
                int different = 0;
                for (int y = 0; y < 22; ++y) {
                    for (int x = 0; x < 22; ++x) {
                        different += std::abs(first.pixelColor(x, y).alpha() - second.pixelColor(x, y).alpha()) > 100;
                    }
                }
                EXPECT_GT(different, 15) << one.toStdString() << " and " << other.toStdString();
            }
        }
    }
}

TEST(Symbol, unknownNameYieldsNothing)
{
    EXPECT_FALSE(Symbol::exists(u"no.such"_s));
    EXPECT_EQ(ink(Symbol::pixmap(u"no.such"_s, 16, Qt::black)), 0);
}

} // namespace talmo::test
