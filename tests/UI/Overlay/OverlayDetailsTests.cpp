// The card's appearance, pixel by pixel, and its position when screens are added.

#include "UI/Overlay/RecordingOverlay.h"

#include "UI/DrawnView.h"
#include "UI/Overlay/DetailText.h"
#include "UI/Overlay/RecordingOverlayController.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QFontMetrics>
#include <QGuiApplication>

namespace talmo::test {

namespace {

using testing::ElementsAre;

QFont fontOf(int pixelSize, QFont::Weight weight)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

class OverlayDetailsTest : public testing::Test {
protected:
    const QFont titleFont = fontOf(13, QFont::DemiBold);
    const QFont detailFont = fontOf(12, QFont::Normal);
    const int titleHeight = QFontMetrics(titleFont).height();
    const int lineHeight = static_cast<int>(std::ceil(QFontMetricsF(detailFont).height()));

    ViewWorld world;
    FakePanels panels;
    std::shared_ptr<FakeScreens> screens = std::make_shared<FakeScreens>();
};

} // namespace

TEST(OverlayContents, eachStateHasItsColour)
{
    const auto dot = [](const TalmoState &state) { return OverlayContents::make(state, {}).dot; };
    EXPECT_EQ(dot(TalmoState::idle()), QColor(Qt::transparent));
    EXPECT_EQ(dot(TalmoState::recording()), QColor(255, 59, 48));
    EXPECT_EQ(dot(TalmoState::processing()), QColor(10, 132, 255));
    EXPECT_EQ(dot(TalmoState::inserting()), QColor(48, 177, 78));
    EXPECT_EQ(dot(TalmoState::error({})), QColor(255, 149, 0));
}

TEST_F(OverlayDetailsTest, sizeIsTextPlusPadding)
{
    RecordingOverlay overlay(world.coordinator());
    world.beRecording();
    EXPECT_EQ(overlay.idealSize(), QSize(220, titleHeight + 20));
    world.hear(u"buy milk"_s);
    EXPECT_EQ(overlay.idealSize(), QSize(220, titleHeight + 6 + lineHeight + 20));
    const QString middling = u"a sentence that is not much too long"_s;
    world.hear(middling);
    const int width = static_cast<int>(std::ceil(QFontMetricsF(detailFont).horizontalAdvance(middling)));
    ASSERT_LT(width, 332);
    ASSERT_GT(width, 192);
    EXPECT_EQ(overlay.idealSize().width(), width + 28);
    world.hear(u"many words "_s.repeated(40));
    EXPECT_EQ(overlay.idealSize(), QSize(360, titleHeight + 6 + 2 * lineHeight + 20));
    EXPECT_EQ(overlay.largestSize(), overlay.idealSize());
}

TEST_F(OverlayDetailsTest, paintsExpectedFontsColoursAndPositions)
{
    RecordingOverlay overlay(world.coordinator());
    world.beRecording();
    world.hear(u"buy milk"_s);
    overlay.resize(overlay.idealSize());
    const auto expected = drawn(overlay.size(), [&](QPainter &painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 59, 48));
        painter.drawEllipse(QRectF(14, 10 + titleHeight / 2 - 4, 8, 8));
        const QColor primary = overlay.palette().color(QPalette::WindowText);
        painter.setPen(primary);
        painter.setFont(titleFont);
        painter.drawText(QRect(14 + 8 + 6, 10, 360, titleHeight), Qt::AlignLeft | Qt::AlignVCenter, u"Listening"_s);
        QColor secondary = primary;
        secondary.setAlphaF(0.66F);
        DetailText(u"buy milk"_s, detailFont, 332, 2)
            .paint(painter, QPointF(14, 10 + titleHeight + 6), overlay.width() - 28, secondary);
    });
    EXPECT_TRUE(drawn(overlay) == expected);
}

TEST_F(OverlayDetailsTest, centresTextInTallerCard)
{
    RecordingOverlay overlay(world.coordinator());
    world.beProcessing();
    const int ideal = overlay.idealSize().height();
    overlay.resize(220, ideal);
    const QImage plain = drawn(overlay);
    overlay.resize(220, ideal + 14);
    EXPECT_TRUE(drawn(overlay).copy(0, 7, 220, ideal) == plain);
}

TEST_F(OverlayDetailsTest, elidesLongTitle)
{
    RecordingOverlay overlay(world.coordinator());
    world.beProcessing();
    overlay.resize(80, titleHeight + 20);
    const auto expected = drawn(overlay.size(), [&](QPainter &painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(10, 132, 255));
        painter.drawEllipse(QRectF(14, 10 + titleHeight / 2 - 4, 8, 8));
        painter.setPen(overlay.palette().color(QPalette::WindowText));
        painter.setFont(titleFont);
        const QString title = QFontMetrics(titleFont).elidedText(u"Cleaning up…"_s, Qt::ElideRight, 80 - 28 - 14);
        painter.drawText(QRect(28, 10, 80 - 28 - 14, titleHeight), Qt::AlignLeft | Qt::AlignVCenter, title);
    });
    EXPECT_TRUE(drawn(overlay) == expected);
}

TEST_F(OverlayDetailsTest, showsInitialState)
{
    world.beRecording();
    const RecordingOverlay overlay(world.coordinator());
    EXPECT_EQ(overlay.contents().title, u"Listening"_s);
    EXPECT_EQ(overlay.accessibleName(), u"Listening"_s);
}

TEST_F(OverlayDetailsTest, reportsOnlyRealSizeChanges)
{
    RecordingOverlay overlay(world.coordinator());
    int changes = 0;
    overlay.setOnIdealSizeChanged([&changes] { ++changes; });
    world.beRecording();
    EXPECT_EQ(changes, 0);
    world.hear(u"a"_s);
    EXPECT_EQ(changes, 1);
    world.hear(u"b"_s);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(overlay.focusPolicy(), Qt::NoFocus);
}

TEST_F(OverlayDetailsTest, positionsCardWhenFirstScreenAppears)
{
    RecordingOverlayController controller(world.coordinator(), panels.factory(), screens);
    const auto all = std::exchange(screens->all, {});
    const auto main = std::exchange(screens->main, std::nullopt);
    world.beRecording();
    controller.show();
    world.hear(u"many words "_s.repeated(40));
    EXPECT_TRUE(panels.last->frames.empty()) << "there is no position for it yet";
    screens->all = all;
    screens->main = main;
    Q_EMIT screens->screenAdded();
    ASSERT_EQ(panels.last->frames.size(), 1U);
    EXPECT_EQ(panels.last->frame().x() + panels.last->frame().width() / 2, 500);
    EXPECT_EQ(panels.last->frame().bottom() + 1, 710);
    EXPECT_THAT(panels.calls, ElementsAre("orderFrontRegardless", "orderFrontRegardless"));
    world.hear(u"few"_s);
    EXPECT_EQ(panels.last->frames.size(), 2U) << "it then follows the transcript";
}

TEST_F(OverlayDetailsTest, newScreenMovesNoPlacedOrHiddenCard)
{
    RecordingOverlayController controller(world.coordinator(), panels.factory(), screens);
    Q_EMIT screens->screenAdded();
    EXPECT_EQ(panels.made, 0);
    controller.show();
    Q_EMIT screens->screenAdded();
    EXPECT_EQ(panels.last->frames.size(), 1U);
    const auto main = std::exchange(screens->main, std::nullopt);
    const auto all = std::exchange(screens->all, {});
    controller.show();
    controller.hide();
    screens->all = all;
    screens->main = main;
    Q_EMIT screens->screenAdded();
    EXPECT_EQ(panels.last->frames.size(), 1U);
}

TEST_F(OverlayDetailsTest, showsEveryLineBreakAsSpace)
{
    const QFont font = detailFont;
    for (const QString &lineBreak :
         {u"\n"_s, u"\r"_s, u"\u2028"_s, u"\u2029"_s, u"\u0085"_s, u"\v"_s, u"\f"_s, u"\t"_s}) {
        const DetailText text(u"one"_s + lineBreak + u"two"_s, font, 332, 2);
        EXPECT_EQ(text.shownText(), u"one two"_s) << int(lineBreak.at(0).unicode());
        EXPECT_EQ(text.size().height(), lineHeight) << int(lineBreak.at(0).unicode());
    }
    EXPECT_EQ(DetailText(u"one\u00A0two"_s, font, 332, 2).shownText(), u"one\u00A0two"_s);
}

TEST_F(OverlayDetailsTest, treatsTranscriptAsPlainText)
{
    RecordingOverlay overlay(world.coordinator());
    world.beRecording();
    world.hear(u"<b>bold</b> &amp;"_s);
    EXPECT_EQ(overlay.shownDetail(), u"<b>bold</b> &amp;"_s);
}

} // namespace talmo::test
