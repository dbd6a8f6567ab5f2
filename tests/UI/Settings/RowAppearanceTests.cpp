// Menu rows and settings tabs, compared pixel by pixel.

#include "UI/DrawnView.h"
#include "UI/Menu/MenuRow.h"
#include "UI/Settings/SettingsTabBar.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/Symbol.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QMouseEvent>
#include <QTest>

namespace talmo::test {

namespace {

QColor faded(QColor colour, float alpha)
{
    colour.setAlphaF(alpha);
    return colour;
}

QColor text(const QWidget &view)
{
    return view.palette().color(QPalette::WindowText);
}

class MenuRowTest : public testing::Test {
protected:
    MenuRowTest()
    {
        row.setContents(u"gearshape"_s, u"Settings & more"_s, u"Ctrl+,"_s);
        row.resize(300, row.sizeHint().height());
        row.show();
    }
    QImage expected(const QColor &title, const QColor &hint, const QColor &ground = {})
    {
        return drawn(row.size(), [&](QPainter &painter) {
            if (ground.isValid()) {
                painter.setPen(Qt::NoPen);
                painter.setBrush(ground);
                painter.drawRoundedRect(row.rect(), 6, 6);
            }
            const int top = (row.height() - 16) / 2;
            painter.drawPixmap(8, top, Symbol::pixmap(u"gearshape"_s, 16, title, 1));
            painter.setFont(Appearance::font(13));
            const QRect area(8 + 16 + 9, 0, 300 - 8 - 16 - 9 - 8, row.height());
            painter.setPen(title);
            painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft, u"Settings & more"_s);
            painter.setPen(hint);
            painter.drawText(area, Qt::AlignVCenter | Qt::AlignRight, u"Ctrl+,"_s);
        });
    }

    MenuRow row;
};

class TabBarTest : public testing::Test {
protected:
    TabBarTest()
    {
        bar.addSymbolTab(u"gearshape"_s, u"General"_s);
        bar.addSymbolTab(u"lock.shield"_s, u"Privacy"_s);
        bar.resize(bar.sizeHint());
        bar.show();
    }
    void paintTab(QPainter &painter, int index, const QColor &ink, float strength)
    {
        const QRect area = bar.tabRect(index).adjusted(2, 0, -2, 0);
        if (strength > 0) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(faded(text(bar), strength));
            painter.drawRoundedRect(area, 8, 8);
        }
        const QPointF corner(area.x() + (area.width() - 20) / 2.0, 6);
        painter.drawPixmap(corner, Symbol::pixmap(bar.tabData(index).toString(), 20, ink, 1));
        painter.setFont(Appearance::font(11, QFont::Medium));
        painter.setPen(ink);
        painter.drawText(area.adjusted(0, 6 + 20 + 4, 0, 0), Qt::AlignHCenter | Qt::AlignTop, bar.tabText(index));
    }

    SettingsTabBar bar;
};

} // namespace

TEST_F(MenuRowTest, paintsExpectedFontsColoursAndPositions)
{
    row.clearFocus();
    EXPECT_TRUE(drawn(row) == expected(text(row), faded(text(row), 0.66F)));
}

TEST_F(MenuRowTest, highlightsOnFocusAndDarkensWhilePressed)
{
    row.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&row));
    row.setFocus();
    const QColor ink = row.palette().color(QPalette::HighlightedText);
    const QColor ground = row.palette().color(QPalette::Highlight);
    EXPECT_TRUE(drawn(row) == expected(ink, ink, ground));
    row.setDown(true);
    EXPECT_TRUE(drawn(row) == expected(ink, ink, ground.darker(115)));
    row.setEnabled(false);
    EXPECT_TRUE(drawn(row) ==
                expected(row.palette().color(QPalette::Disabled, QPalette::WindowText), faded(text(row), 0.66F)));
}

TEST_F(MenuRowTest, fitsItsContents)
{
    const QFontMetrics metrics(Appearance::font(13));
    const int title = metrics.horizontalAdvance(u"Settings & more"_s);
    const int hint = metrics.horizontalAdvance(u"Ctrl+,"_s);
    EXPECT_EQ(row.sizeHint(), QSize(8 + 16 + 9 + title + 18 + hint + 8, metrics.height() + 12));
    EXPECT_EQ(row.minimumSizeHint(), row.sizeHint());
    row.setContents(u"power"_s, u"Settings & more"_s, {});
    EXPECT_EQ(row.sizeHint().width(), 8 + 16 + 9 + title + 8);
}

TEST_F(MenuRowTest, isAccessibleAndActivatedByKeyboard)
{
    EXPECT_EQ(row.accessibleName(), u"Settings & more"_s);
    EXPECT_EQ(row.accessibleDescription(), u"Ctrl+,"_s);
    EXPECT_EQ(row.text(), u"Settings && more"_s) << "titles have no mnemonics";
    EXPECT_TRUE(row.isFlat());
    EXPECT_EQ(row.focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(row.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    EXPECT_EQ(row.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    int clicks = 0;
    QObject::connect(&row, &QPushButton::clicked, &row, [&clicks] { ++clicks; });
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        QTest::keyClick(&row, key);
    }
    EXPECT_EQ(clicks, 3);
}

TEST_F(TabBarTest, highlightsSelectedAndHoveredTab)
{
    bar.clearFocus();
    QPalette palette = Appearance::palette(ColourScheme::Light);
    const QColor chosen(0x20, 0x20, 0xa0); // As it is, since it can be read.
    palette.setColor(QPalette::Highlight, chosen);
    bar.setPalette(palette);
    const QColor other = faded(text(bar), 0.66F);
    EXPECT_TRUE(drawn(bar) == drawn(bar.size(), [&](QPainter &painter) {
                    paintTab(painter, 0, chosen, 0.10F);
                    paintTab(painter, 1, other, 0);
                }));
    const QPointF pointed = bar.tabRect(1).center();
    QMouseEvent move(QEvent::MouseMove, pointed, bar.mapToGlobal(pointed), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&bar, &move);
    EXPECT_TRUE(drawn(bar) == drawn(bar.size(), [&](QPainter &painter) {
                    paintTab(painter, 0, chosen, 0.10F);
                    paintTab(painter, 1, other, 0.05F);
                }));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&bar, &leave);
    EXPECT_TRUE(drawn(bar) == drawn(bar.size(), [&](QPainter &painter) {
                    paintTab(painter, 0, chosen, 0.10F);
                    paintTab(painter, 1, other, 0);
                }));
}

TEST_F(TabBarTest, framesSelectedTabOnFocus)
{
    bar.setPalette(Appearance::palette(ColourScheme::Dark));
    bar.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&bar));
    bar.setFocus();
    EXPECT_TRUE(drawn(bar) == drawn(bar.size(), [&](QPainter &painter) {
                    const QRectF area = bar.tabRect(0).adjusted(2, 0, -2, 0);
                    painter.setPen(Qt::NoPen);
                    painter.setBrush(faded(text(bar), 0.10F));
                    painter.drawRoundedRect(area, 8, 8);
                    painter.setPen(QPen(bar.palette().color(QPalette::Highlight), 2));
                    painter.setBrush(Qt::NoBrush);
                    painter.drawRoundedRect(area.adjusted(1, 1, -1, -1), 8, 8);
                    paintTab(painter, 0, text(bar), 0);
                    paintTab(painter, 1, faded(text(bar), 0.66F), 0);
                }));
}

TEST_F(TabBarTest, fitsSymbolAndTitle)
{
    const QFontMetrics metrics(Appearance::font(11, QFont::Medium));
    EXPECT_EQ(bar.tabRect(0).size(), QSize(78, 20 + 4 + metrics.height() + 12));
    bar.setTabText(1, u"A title that takes more room"_s);
    EXPECT_EQ(bar.tabRect(1).width(), metrics.horizontalAdvance(u"A title that takes more room"_s) + 24);
    EXPECT_FALSE(bar.drawBase());
    EXPECT_FALSE(bar.expanding());
    EXPECT_EQ(bar.focusPolicy(), Qt::StrongFocus);
}

} // namespace talmo::test
