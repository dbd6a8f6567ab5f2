#include "UI/Style/BriefText.h"

#include "App/DictationNotice.h"
#include "UI/Menu/MenuBarView.h"
#include "UI/Menu/MenuContents.h"
#include "UI/Overlay/RecordingOverlay.h"
#include "UI/Style/Appearance.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QPushButton>

namespace talmo::test {

namespace {

const QString longError =
    u"The file on the server is not the one that Talmo knows; its maker has probably renewed it. Update Talmo, or "
    u"choose another model in the settings, and then try it again when the network is there."_s;

/// How many lines the label's text takes.
int lines(const QLabel &label)
{
    const QFontMetrics metrics(label.font());
    return qRound(qreal(label.heightForWidth(label.width())) / metrics.lineSpacing());
}

QPushButton *detailsOf(const QWidget &view)
{
    for (auto *button : view.findChildren<QPushButton *>()) {
        if (button->text() == u"Details"_s) {
            return button;
        }
    }
    return nullptr;
}

} // namespace

TEST(FirstLines, keepWhatFits)
{
    const QFont font = Appearance::font(13);
    EXPECT_EQ(firstLines(u"Nothing to insert."_s, font, 270, 2), u"Nothing to insert."_s);
    EXPECT_EQ(firstLines({}, font, 270, 2), QString());
    const QString brief = firstLines(longError, font, 270, 2);
    EXPECT_TRUE(brief.startsWith(u"The file on the server"_s));
    EXPECT_TRUE(brief.endsWith(u"…"_s));
    EXPECT_LT(brief.size(), longError.size());
}

TEST(BriefText, showsTwoLinesAndTheRestWhenAsked)
{
    BriefText text(Appearance::font(13), &Appearance::secondary, 270);
    int sizes = 0;
    text.setOnSizeChanged([&sizes] { ++sizes; });
    text.setText(longError);
    text.resize(270, 200);
    text.show();
    ASSERT_NE(detailsOf(text), nullptr);
    EXPECT_TRUE(detailsOf(text)->isVisible());
    EXPECT_LE(lines(text.label()), 2);
    detailsOf(text)->click();
    EXPECT_EQ(text.label().text(), longError);
    EXPECT_FALSE(detailsOf(text)->isVisible());
    EXPECT_EQ(sizes, 1);
    text.setText(u"Nothing to insert."_s);
    EXPECT_FALSE(detailsOf(text)->isVisible());
    text.setText(longError);
    EXPECT_TRUE(detailsOf(text)->isVisible());
}

TEST(MenuBarView, showsLongErrorBriefly)
{
    ViewWorld world;
    MenuBarView menu(world.context(), [](MenuAction) {});
    world.fail(longError);
    const QSize brief = menu.sizeHint();
    menu.resize(brief);
    menu.show();
    ASSERT_TRUE(detailsOf(menu) != nullptr && detailsOf(menu)->isVisible());
    bool wasAnnounced = false;
    menu.setOnSizeChanged([&wasAnnounced] { wasAnnounced = true; });
    detailsOf(menu)->click();
    EXPECT_TRUE(wasAnnounced);
    EXPECT_GT(menu.sizeHint().height(), brief.height());
    menu.setDetailed(false);
    EXPECT_EQ(menu.sizeHint(), brief);
}

TEST(MenuContents, plainMenuHasLongErrorsBriefly)
{
    const auto contents = [](const QString &message) {
        return MenuContents::make(TalmoState::error(message), SimpleStatus::Granted, SimpleStatus::Granted, true,
                                  u"Right Ctrl"_s);
    };
    const auto brief = contents(longError);
    EXPECT_EQ(brief.title, longError);
    EXPECT_LE(brief.briefTitle().size(), 60);
    EXPECT_TRUE(brief.briefTitle().endsWith(u"…"_s));
    EXPECT_EQ(brief.details.title, u"Details"_s);
    EXPECT_EQ(brief.details.action, MenuAction::ShowDetails);
    EXPECT_EQ(contents(u"Nothing to insert."_s).briefTitle(), u"Nothing to insert."_s);
    EXPECT_EQ(contents(u"Nothing to insert."_s).details, MenuEntry());
}

TEST(RecordingOverlay, longErrorPointsToItsFullText)
{
    ViewWorld world;
    RecordingOverlay overlay(world.coordinator());
    world.fail(u"Nothing to insert."_s);
    EXPECT_EQ(overlay.hint(), QString());
    world.fail(longError);
    EXPECT_EQ(overlay.hint(), u"Details in the menu"_s);
    world.beRecording();
    world.hear(longError); // Not an error, only long.
    EXPECT_EQ(overlay.hint(), QString());
}

} // namespace talmo::test
