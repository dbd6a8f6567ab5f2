#include "UI/Menu/MenuBarView.h"

#include "Support/FakeRecogniserSettings.h"
#include "UI/AccessibleView.h"
#include "UI/Menu/MenuRow.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QTest>

namespace talmo::test {

namespace {

class MenuBarViewTest : public testing::Test {
protected:
    MenuBarViewTest()
        : view(world.context(), [this](MenuAction action) { chosen.push_back(action); })
    {
        view.show();
    }

    QStringList texts() { return accessibleNames(view, QAccessible::StaticText); }
    QStringList buttons() { return accessibleNames(view, QAccessible::Button); }
    MenuRow *row(const QString &title)
    {
        return dynamic_cast<MenuRow *>(accessibleWidget(view, QAccessible::Button, title));
    }

    ViewWorld world;
    std::vector<MenuAction> chosen;
    MenuBarView view;
};

} // namespace

TEST_F(MenuBarViewTest, offersBetterRecognitionUntilItIsInstalled)
{
    ViewWorld here;
    const auto recogniser = std::make_shared<FakeRecogniserSettings>();
    here.recogniser = recogniser;
    MenuBarView shown(here.context(), [this](MenuAction action) { chosen.push_back(action); });
    shown.show();
    const auto offer = [&shown] { return accessibleWidget(shown, QAccessible::Button, u"Get better recognition"_s); };
    EXPECT_EQ(offer(), nullptr);
    const int height = shown.sizeHint().height();
    recogniser->offered = {u"Kroko (English), 67 MB. Licences: Apache-2.0, CC-BY-SA-4.0."_s, u"67 MB"_s};
    recogniser->change();
    settle();
    ASSERT_NE(offer(), nullptr);
    EXPECT_TRUE(accessibleNames(shown, QAccessible::StaticText).contains(recogniser->offered->detail));
    EXPECT_GT(shown.sizeHint().height(), height);
    qobject_cast<QAbstractButton *>(offer())->click();
    EXPECT_THAT(chosen, testing::ElementsAre(MenuAction::GetBetterRecognition));

    recogniser->underWay = {u"kroko-en"_s, u"Downloading: 12 of 67 MB, 3.0 MB/s, 18 s left"_s, 0.2};
    recogniser->change();
    settle();
    EXPECT_EQ(offer(), nullptr);
    EXPECT_TRUE(accessibleNames(shown, QAccessible::StaticText).contains(recogniser->underWay->description));

    recogniser->underWay = std::nullopt;
    recogniser->offered = std::nullopt;
    recogniser->change();
    settle();
    EXPECT_EQ(shown.sizeHint().height(), height);
}

TEST_F(MenuBarViewTest, rendersEveryStateWithEveryPermission)
{
    for (int state = 0; state < 5; ++state) {
        ViewWorld here;
        MenuBarView shown(here.context(), [](MenuAction) {});
        shown.show();
        switch (state) {
        case 1:
            here.beRecording();
            break;
        case 2:
            here.beProcessing();
            break;
        case 3:
            here.beInserting();
            break;
        case 4:
            here.fail(u"The microphone is asleep."_s);
            break;
        default:
            break;
        }
        for (int bits = 0; bits < 8; ++bits) {
            here.setPermissions((bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0);
            const auto expected = MenuContents::make(here.context());
            QStringList expectedTexts{expected.title};
            if (!expected.subtitle.isEmpty()) {
                expectedTexts.append(expected.subtitle);
            }
            expectedTexts += expected.warnings;
            QStringList expectedButtons;
            if (!expected.warnings.isEmpty()) {
                expectedButtons.append(expected.grant.title);
            }
            expectedButtons << expected.mainRow.title << expected.settings.title << expected.quit.title;
            EXPECT_EQ(accessibleNames(shown, QAccessible::StaticText), expectedTexts) << state << " " << bits;
            EXPECT_EQ(accessibleNames(shown, QAccessible::Button), expectedButtons) << state << " " << bits;
            const auto *main =
                dynamic_cast<MenuRow *>(accessibleWidget(shown, QAccessible::Button, expected.mainRow.title));
            ASSERT_NE(main, nullptr);
            EXPECT_EQ(main->symbol(), expected.mainRow.symbol);
            EXPECT_EQ(main->isEnabled(), expected.mainRow.action != MenuAction::None);
        }
    }
}

TEST_F(MenuBarViewTest, rowsDescribeAndPerformActions)
{
    row(u"Start Recording"_s)->click();
    row(u"Settings"_s)->click();
    row(u"Quit Talmo"_s)->click();
    EXPECT_THAT(chosen, testing::ElementsAre(MenuAction::BeginDictation, MenuAction::OpenSettings, MenuAction::Quit));
    EXPECT_EQ(row(u"Settings"_s)->hint(), u"⌘,"_s);
}

TEST_F(MenuBarViewTest, mainRowStopsRecordingAndIsInertWhileProcessing)
{
    world.beRecording();
    row(u"Stop Recording"_s)->click();
    EXPECT_THAT(chosen, testing::ElementsAre(MenuAction::EndDictation));
    world.beProcessing();
    // The "Stop Recording" row has become this one.
    row(u"Cleaning up…"_s)->click();
    EXPECT_EQ(chosen.size(), 1U);
}

TEST(PausedMenuBarView, offersToResumeOnlyWhilePaused)
{
    ViewWorld world;
    world.pause = std::make_shared<DictationPause>();
    QList<MenuAction> chosen;
    MenuBarView view(world.context(), [&chosen](MenuAction action) { chosen.append(action); });
    view.show();
    EXPECT_FALSE(accessibleNames(view, QAccessible::Button).contains(u"Resume Talmo"_s));
    const int before = view.sizeHint().height();
    world.pause->setPaused(true);
    settle();
    EXPECT_GT(view.sizeHint().height(), before);
    auto *row = qobject_cast<QAbstractButton *>(accessibleWidget(view, QAccessible::Button, u"Resume Talmo"_s));
    ASSERT_NE(row, nullptr);
    row->click();
    EXPECT_EQ(chosen, QList{MenuAction::Resume});
}

TEST_F(MenuBarViewTest, permissionsCanBeGranted)
{
    world.setPermissions(false, true, true);
    EXPECT_EQ(texts(), (QStringList{u"Talmo needs permissions"_s, u"Microphone access needed"_s}));
    qobject_cast<QAbstractButton *>(accessibleWidget(view, QAccessible::Button, u"Grant Permissions…"_s))->click();
    EXPECT_THAT(chosen, testing::ElementsAre(MenuAction::GrantPermissions));
    world.setPermissions(true, true, true);
    EXPECT_FALSE(buttons().contains(u"Grant Permissions…"_s));
    EXPECT_EQ(texts().first(), u"Talmo is ready"_s);
}

TEST_F(MenuBarViewTest, showsNewKeyNameImmediately)
{
    world.settings->setHotkeyDisplayName(u"F13"_s);
    settle();
    EXPECT_TRUE(texts().contains(u"Hold F13, or double-tap for hands-free"_s));
}

TEST_F(MenuBarViewTest, growsWithWarningsAndReportsIt)
{
    int changes = 0;
    view.setOnSizeChanged([&changes] { ++changes; });
    const QSize before = view.sizeHint();
    world.setPermissions(false, false, false);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(view.sizeHint().width(), before.width());
    EXPECT_GT(view.sizeHint().height(), before.height());
}

TEST_F(MenuBarViewTest, longErrorWraps)
{
    const QSize before = view.sizeHint();
    world.fail(u"Couldn't start audio capture: the sound server of this machine is not there, and nobody knows why."_s);
    EXPECT_EQ(view.sizeHint().width(), before.width());
    EXPECT_GT(view.sizeHint().height(), before.height() + 10);
}

TEST_F(MenuBarViewTest, keyboardReachesEveryRow)
{
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    view.focusFirstRow();
    EXPECT_TRUE(row(u"Start Recording"_s)->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(row(u"Settings"_s)->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(row(u"Quit Talmo"_s)->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(row(u"Start Recording"_s)->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_TRUE(row(u"Quit Talmo"_s)->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    EXPECT_TRUE(row(u"Start Recording"_s)->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_THAT(chosen, testing::ElementsAre(MenuAction::Quit, MenuAction::Quit, MenuAction::OpenSettings));
}

TEST_F(MenuBarViewTest, pointerMovesHighlight)
{
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    view.focusFirstRow();
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QApplication::sendEvent(row(u"Settings"_s), &enter);
    EXPECT_TRUE(row(u"Settings"_s)->hasFocus());
}

TEST_F(MenuBarViewTest, keyboardFocusSkipsInertMainRow)
{
    world.beProcessing();
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    view.focusFirstRow();
    EXPECT_TRUE(row(u"Settings"_s)->hasFocus());
}

} // namespace talmo::test
