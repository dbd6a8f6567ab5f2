#include "UI/Style/FocusRing.h"

#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "UI/Style/Appearance.h"

#include <QCheckBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

class FocusRingTest : public testing::Test {
protected:
    FocusRingTest()
    {
        auto *page = new QWidget;
        auto *column = new QVBoxLayout(page);
        column->addWidget(first);
        column->addSpacing(400);
        column->addWidget(last);
        area->setFocusPolicy(Qt::NoFocus);
        area->setWidget(page);
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(area);
        window.resize(260, 200);
        window.show();
        window.activateWindow();
        settle();
    }
    void press(Qt::Key key)
    {
        QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, key);
        settle();
    }
    bool isShown() const { return ring->frame() != nullptr && ring->frame()->isVisible(); }
    QRect ringOnScreen() const { return isShown() ? onScreen(*ring->frame()) : QRect(); }
    static QRect onScreen(const QWidget &control) { return {control.mapToGlobal(QPoint(0, 0)), control.size()}; }

    QWidget window;
    QScrollArea *area = new QScrollArea;
    QPushButton *first = new QPushButton(u"First"_s);
    QCheckBox *last = new QCheckBox(u"Last"_s);
    FocusRing *ring = new FocusRing(&window);
};

} // namespace

TEST_F(FocusRingTest, surroundsControlThatTabReaches)
{
    first->setFocus(Qt::MouseFocusReason);
    settle();
    EXPECT_FALSE(isShown()) << "who clicks knows where";
    press(Qt::Key_Tab);
    ASSERT_TRUE(last->hasFocus());
    EXPECT_TRUE(isShown());
    EXPECT_EQ(ringOnScreen(), onScreen(*last).adjusted(-3, -3, 3, 3)) << "scrolled into view";
    press(Qt::Key_Backtab);
    EXPECT_EQ(ringOnScreen(), onScreen(*first).adjusted(-3, -3, 3, 3));
    delete area->takeWidget(); // As the welcome goes.
    settle();
    EXPECT_FALSE(isShown());
    auto *other = new QPushButton;
    window.layout()->addWidget(other);
    settle();
    press(Qt::Key_Tab);
    ASSERT_TRUE(other->hasFocus());
    EXPECT_EQ(ringOnScreen(), onScreen(*other).adjusted(-3, -3, 3, 3));
}

TEST_F(FocusRingTest, isSeenOnEverySurface)
{
    for (const auto scheme : {ColourScheme::Light, ColourScheme::Dark}) {
        QPalette palette = Appearance::palette(scheme);
        palette.setColor(QPalette::Highlight, palette.color(QPalette::Window)); // A desktop's invisible accent.
        window.setPalette(palette);
        first->setFocus(Qt::MouseFocusReason);
        press(Qt::Key_Tab);
        ASSERT_TRUE(isShown());
        QImage image(ringOnScreen().size(), QImage::Format_RGB32);
        image.fill(palette.color(QPalette::Window));
        const_cast<QFocusFrame *>(ring->frame())->render(&image, {}, {}, QWidget::RenderFlags());
        const QColor line = image.pixelColor(image.width() / 2, 1);
        EXPECT_GE(Appearance::contrast(line, palette.color(QPalette::Window)), Appearance::shapeContrast);
        EXPECT_EQ(image.pixelColor(image.width() / 2, 0), line) << "two pixels wide";
        EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), palette.color(QPalette::Window));
    }
}

} // namespace talmo::test
