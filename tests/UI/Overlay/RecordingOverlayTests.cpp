#include "UI/Overlay/RecordingOverlay.h"

#include "UI/AccessibleView.h"
#include "UI/Overlay/RecordingOverlayController.h"
#include "UI/Style/Appearance.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QFontMetrics>
#include <QTextBoundaryFinder>

namespace talmo::test {

namespace {

class RecordingOverlayTest : public testing::Test {
protected:
    RecordingOverlay &content() { return dynamic_cast<RecordingOverlay &>(*panels.last->content); }
    QRect frame() { return panels.last->frame(); }

    ViewWorld world;
    FakePanels panels;
    std::shared_ptr<FakeScreens> screens = std::make_shared<FakeScreens>();
    RecordingOverlayController controller{world.coordinator(), panels.factory(), screens};
};

QString words(int count)
{
    QStringList list;
    for (int index = 1; index <= count; ++index) {
        list.append(QStringLiteral("word%1").arg(index));
    }
    return list.join(QLatin1Char(' '));
}

QFont detailFont()
{
    return Appearance::font(Appearance::detailSize);
}

} // namespace

TEST(OverlayContents, describeEachStateExactly)
{
    const QString heard = u"buy milk"_s;
    EXPECT_EQ(OverlayContents::make(TalmoState::idle(), heard), (OverlayContents{Qt::transparent, {}, {}, {}}));
    const auto recording = OverlayContents::make(TalmoState::recording(), heard);
    EXPECT_EQ(recording.title, u"Listening"_s);
    EXPECT_EQ(recording.detail, heard);
    EXPECT_EQ(OverlayContents::make(TalmoState::processing(), heard).title, u"Cleaning up…"_s);
    EXPECT_EQ(OverlayContents::make(TalmoState::processing(), heard).detail, QString());
    EXPECT_EQ(OverlayContents::make(TalmoState::inserting(), heard).title, u"Inserting…"_s);
    EXPECT_EQ(OverlayContents::make(TalmoState::inserting(), heard).detail, QString());
    const auto error = OverlayContents::make(TalmoState::error(u"No speech detected."_s), heard);
    EXPECT_EQ(error.title, u"Talmo"_s);
    EXPECT_EQ(error.detail, u"No speech detected."_s);
}

TEST(OverlayContents, dotColoursDiffer)
{
    const auto hue = [](const TalmoState &state) { return OverlayContents::make(state, {}).dot.hue(); };
    EXPECT_LT(std::min(hue(TalmoState::recording()), 360 - hue(TalmoState::recording())), 20); // Red.
    EXPECT_NEAR(hue(TalmoState::processing()), 220, 30);                                       // Blue.
    EXPECT_NEAR(hue(TalmoState::inserting()), 130, 30);                                        // Green.
    EXPECT_NEAR(hue(TalmoState::error({})), 35, 15);                                           // Orange.
}

TEST_F(RecordingOverlayTest, createsPanelOnceWithExpectedOptions)
{
    controller.hide(); // Nothing has been shown yet.
    EXPECT_EQ(panels.made, 0);
    controller.show();
    controller.show();
    EXPECT_EQ(panels.made, 1);
    const auto &options = panels.last->options;
    EXPECT_EQ(options.contentRect, QRect(0, 0, 320, 70));
    EXPECT_EQ(options.styleMask, 128U);
    EXPECT_EQ(options.backingStore, 2U);
    EXPECT_FALSE(options.isDeferred);
    EXPECT_FALSE(options.isOpaque);
    EXPECT_TRUE(options.hasShadow);
    EXPECT_EQ(options.level, 3);
    EXPECT_EQ(options.collectionBehavior, 337U);
    EXPECT_FALSE(options.isMovableByBackground);
    EXPECT_FALSE(options.hidesOnDeactivate);
    EXPECT_FALSE(options.canBecomeKey);
    EXPECT_FALSE(OverlayPanel::canBecomeMainWindow());
    controller.hide();
    EXPECT_THAT(panels.calls, testing::ElementsAre("orderFrontRegardless", "orderFrontRegardless", "orderOut"));
}

TEST_F(RecordingOverlayTest, positionsPanelBeforeRaisingIt)
{
    world.beRecording();
    controller.show();
    ASSERT_EQ(panels.last->frames.size(), 1U);
    EXPECT_EQ(frame().width(), 220);
    EXPECT_EQ(frame().x(), 390);
    EXPECT_EQ(frame().y() + frame().height(), 800 - 90);
    EXPECT_GE(frame().height(), 50);
}

TEST_F(RecordingOverlayTest, staysWithinAvailableAreaOfPointersScreen)
{
    screens->all = {{QRect(0, 0, 1000, 800), QRect(0, 24, 1000, 726)},
                    {QRect(1000, 100, 640, 480), QRect(1080, 100, 560, 480)}};
    screens->main = screens->all.first();
    screens->pointer = QPoint(1100, 300);
    controller.show();
    EXPECT_EQ(frame().x() + frame().width() / 2, 1080 + 280);
    EXPECT_EQ(frame().y() + frame().height(), 580 - 90);
    screens->pointer = QPoint(999, 799);
    controller.show();
    EXPECT_EQ(frame().x() + frame().width() / 2, 500);
    EXPECT_EQ(frame().y() + frame().height(), 750 - 90);
}

TEST_F(RecordingOverlayTest, usesMainScreenIfPointerIsOffScreen)
{
    screens->all = {{QRect(0, 0, 1000, 800), QRect(0, 0, 1000, 800)},
                    {QRect(1000, 400, 640, 480), QRect(1000, 400, 640, 480)}};
    screens->main = screens->all.last();
    screens->pointer = QPoint(1200, 100); // Above the second screen, right of the first.
    controller.show();
    EXPECT_EQ(frame().x() + frame().width() / 2, 1320);
}

TEST_F(RecordingOverlayTest, isNotMovedWithoutScreens)
{
    screens->all.clear();
    screens->main.reset();
    controller.show();
    EXPECT_TRUE(panels.last->frames.empty());
    EXPECT_THAT(panels.calls, testing::ElementsAre("orderFrontRegardless"));
}

TEST_F(RecordingOverlayTest, sizesForTheStateBeingShown)
{
    world.beRecording();
    controller.show();
    world.hear(words(40));
    const QSize large = frame().size();
    // Called during the change notification, as the coordinator does, before anything queued has run.
    world.coordinator().endDictation();
    controller.show();
    EXPECT_EQ(content().contents().title, u"Cleaning up…"_s);
    EXPECT_LT(frame().height(), large.height());
    EXPECT_EQ(frame().width(), 220);
}

TEST_F(RecordingOverlayTest, growsWithTranscriptKeepingBottomCentre)
{
    world.beRecording();
    controller.show();
    const int bottom = frame().y() + frame().height();
    int widest = 0;
    for (int count = 1; count < 60; ++count) {
        world.hear(words(count));
        EXPECT_EQ(frame().y() + frame().height(), bottom);
        EXPECT_NEAR(frame().x() + frame().width() / 2.0, 500, 0.5);
        EXPECT_GE(frame().width(), 220);
        EXPECT_LE(frame().width(), 360);
        EXPECT_GE(frame().width(), widest);
        EXPECT_TRUE(content().shownDetail().endsWith(QStringLiteral("word%1").arg(count)));
        widest = frame().width();
    }
    EXPECT_EQ(widest, 360);
    EXPECT_TRUE(content().shownDetail().startsWith(u"…"_s));
    EXPECT_FALSE(content().shownDetail().contains(u"word1 "_s));
}

TEST_F(RecordingOverlayTest, doesNotResizeWhileHidden)
{
    world.beRecording();
    controller.show();
    controller.hide();
    const auto before = panels.last->frames.size();
    world.hear(words(40));
    EXPECT_EQ(panels.last->frames.size(), before);
}

TEST_F(RecordingOverlayTest, neverExceedsMaximumWindowSize)
{
    world.beRecording();
    controller.show();
    for (const auto &text : {words(200), QString(2000, QLatin1Char('W')), u"שלום עולם "_s.repeated(50),
                             u"👩‍👩‍👧‍👦"_s.repeated(80)}) {
        world.hear(text);
        EXPECT_LE(frame().width(), panels.last->options.largestContentSize.width());
        EXPECT_LE(frame().height(), panels.last->options.largestContentSize.height());
    }
}

TEST_F(RecordingOverlayTest, neverTranslatesTranscript)
{
    world.beRecording();
    controller.show();
    world.hear(u"Listening… Cleaning up…"_s);
    EXPECT_EQ(content().contents().detail, u"Listening… Cleaning up…"_s);
    EXPECT_EQ(content().accessibleName(), u"Listening"_s);
    EXPECT_EQ(accessibleText(content(), QAccessible::Description), u"Listening… Cleaning up…"_s);
}

TEST(DetailText, shortTextIsShownUnchanged)
{
    const DetailText text(u"buy milk"_s, detailFont(), 332, 2);
    EXPECT_EQ(text.shownText(), u"buy milk"_s);
    EXPECT_EQ(text.size().height(), DetailText::lineHeight(detailFont()));
    EXPECT_NEAR(text.size().width(), QFontMetricsF(detailFont()).horizontalAdvance(u"buy milk"_s), 1.5);
}

TEST(DetailText, showsLatestWordsThatFitTwoLines)
{
    const DetailText text(words(100), detailFont(), 332, 2);
    EXPECT_EQ(text.size(), QSize(332, 2 * DetailText::lineHeight(detailFont())));
    EXPECT_TRUE(text.shownText().startsWith(u"…word"_s)); // Cut at a word.
    EXPECT_TRUE(text.shownText().endsWith(u" word99 word100"_s));
    // One more word would not fit.
    const int first = text.shownText().mid(5, text.shownText().indexOf(QLatin1Char(' ')) - 5).toInt();
    const QString longer = QStringLiteral("…word%1 ").arg(first - 1) + text.shownText().mid(1);
    EXPECT_LT(DetailText(longer, detailFont(), 332, 2).shownText().size(), longer.size());
}

TEST(DetailText, truncatesSingleLongWord)
{
    const QString word = QString(500, QLatin1Char('x')) + u"end"_s;
    const DetailText text(word, detailFont(), 332, 2);
    EXPECT_TRUE(text.shownText().startsWith(u"…xx"_s));
    EXPECT_TRUE(text.shownText().endsWith(u"xend"_s));
    EXPECT_EQ(text.size().height(), 2 * DetailText::lineHeight(detailFont()));
}

TEST(DetailText, keepsGraphemeClustersWhole)
{
    const QString family = u"👩‍👩‍👧‍👦"_s;
    const DetailText text(family.repeated(300), detailFont(), 332, 2);
    const QString rest = text.shownText().mid(1);
    EXPECT_GT(rest.size(), 0);
    EXPECT_EQ(rest, family.repeated(static_cast<int>(rest.size() / family.size())));
}

TEST(DetailText, newLinesBecomeSpaces)
{
    EXPECT_EQ(DetailText(u"one\ntwo"_s, detailFont(), 332, 2).shownText(), u"one two"_s);
}

} // namespace talmo::test
