#include "UI/Accessibility/AccessibleViews.h"

#include "UI/AccessibleView.h"
#include "UI/Menu/MenuBarView.h"
#include "UI/Overlay/RecordingOverlay.h"
#include "UI/Settings/SettingsWindow.h"
#include "UI/Style/LevelBar.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

/// The names and descriptions that are announced as changed while this exists.
class AnnouncedChanges {
public:
    AnnouncedChanges()
    {
        count = 0;
        m_before = QAccessible::installUpdateHandler(&note);
    }
    ~AnnouncedChanges() { QAccessible::installUpdateHandler(m_before); }
    AnnouncedChanges(const AnnouncedChanges &) = delete;
    AnnouncedChanges &operator=(const AnnouncedChanges &) = delete;

    static int count;

private:
    static void note(QAccessibleEvent *event)
    {
        count += event->type() == QAccessible::NameChanged || event->type() == QAccessible::DescriptionChanged ? 1 : 0;
    }

    QAccessible::UpdateHandler m_before;
};

int AnnouncedChanges::count = 0;

QAccessible::Role roleOf(QWidget &view)
{
    return QAccessible::queryAccessibleInterface(&view)->role();
}

class AccessibleViewsTest : public testing::Test {
protected:
    AccessibleViewsTest() { describeViewsToScreenReaders(); }

    ViewWorld world;
};

} // namespace

TEST_F(AccessibleViewsTest, settingsAreADialogWithTheWindowsTitle)
{
    SettingsWindow window(world.context(), std::make_shared<FakeScreens>());
    EXPECT_EQ(roleOf(window), QAccessible::Dialog);
    EXPECT_EQ(accessibleText(window, QAccessible::Name), u"Talmo Settings"_s);
}

TEST_F(AccessibleViewsTest, menuIsAMenu)
{
    MenuBarView menu(world.context(), [](MenuAction) {});
    EXPECT_EQ(roleOf(menu), QAccessible::PopupMenu);
    EXPECT_EQ(accessibleText(menu, QAccessible::Name), u"Talmo"_s);
}

TEST_F(AccessibleViewsTest, levelBarHasAValueInPercent)
{
    LevelBar bar;
    bar.setLevel(0.426);
    auto *value = QAccessible::queryAccessibleInterface(&bar)->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toInt(), 43);
    EXPECT_EQ(value->minimumValue().toInt(), 0);
    EXPECT_EQ(value->maximumValue().toInt(), 100);
}

TEST_F(AccessibleViewsTest, liveWordsAreReadableAndNotAnnounced)
{
    RecordingOverlay overlay(world.coordinator());
    MenuBarView menu(world.context(), [](MenuAction) {});
    SettingsWindow settings(world.context(), std::make_shared<FakeScreens>());
    overlay.show();
    menu.show();
    settings.open();
    world.beRecording();
    world.hear(u"hello"_s);
    const AnnouncedChanges changes;
    for (int count = 0; count < 20; ++count) {
        world.hear(QString::number(count));
    }
    EXPECT_EQ(changes.count, 0);
    EXPECT_EQ(accessibleText(overlay, QAccessible::Name), u"Listening"_s);
    EXPECT_EQ(accessibleText(overlay, QAccessible::Description), u"19"_s);
}

} // namespace talmo::test
