#include "UI/Settings/PrivacySettingsTab.h"

#include "Support/FakeDesktopExtension.h"
#include "Support/FakeMicrophoneSettings.h"
#include "Support/FakePasswordFieldSettings.h"
#include "UI/AccessibleView.h"
#include "UI/FindViews.h"
#include "UI/ViewWorld.h"

#include <QCheckBox>
#include <QPushButton>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class PrivacyTabTest : public testing::Test {
protected:
    PrivacyTabTest() { tab.show(); }

    ViewWorld world;
    PrivacySettingsTab tab{world.context()};
};

} // namespace

TEST_F(PrivacyTabTest, hasExpectedTexts)
{
    EXPECT_EQ(
        accessibleNames(tab, QAccessible::StaticText),
        (QStringList{
            u"Audio and transcripts are processed locally on this Mac."_s,
            u"Talmo has no backend, no account, and no network functionality. Recording, transcription, and text cleanup all run using Apple's on-device Speech and Foundation Models frameworks. Nothing you say or type is sent anywhere."_s,
            u"Microphone"_s, u"Speech Recognition"_s, u"Accessibility"_s}));
    EXPECT_EQ(accessibleNames(tab, QAccessible::Button),
              (QStringList{u"Open Settings…"_s, u"Open Settings…"_s, u"Open Settings…"_s}));
}

TEST_F(PrivacyTabTest, eachRowShowsPermissionBySymbolShape)
{
    const QString yes = u"checkmark.circle.fill"_s;
    const QString no = u"exclamationmark.triangle.fill"_s;
    const QString shield = u"checkmark.shield.fill"_s;
    EXPECT_EQ(symbols(tab), (QStringList{shield, yes, yes, yes}));
    for (int bits = 0; bits < 8; ++bits) {
        world.setPermissions((bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0);
        EXPECT_EQ(symbols(tab), (QStringList{shield, (bits & 1) != 0 ? yes : no, (bits & 2) != 0 ? yes : no,
                                             (bits & 4) != 0 ? yes : no}));
    }
}

TEST_F(PrivacyTabTest, eachButtonOpensItsPane)
{
    for (auto *button : tab.findChildren<QPushButton *>()) {
        button->click();
    }
    EXPECT_THAT(world.panes->opened,
                testing::ElementsAre(SettingsPane::Microphone, SettingsPane::Microphone, SettingsPane::Accessibility));
}

TEST(PrivacyTab, namesWhatDesktopDoesNotAllow)
{
    ViewWorld world;
    auto context = world.context();
    context.limits = {u"This desktop does not let Talmo type into Wayland windows."_s};
    PrivacySettingsTab tab(context);
    tab.show();
    EXPECT_THAT(accessibleNames(tab, QAccessible::StaticText),
                testing::Contains(u"This desktop does not let Talmo type into Wayland windows."_s));
}

TEST(PrivacyTab, togglesPasswordFieldGuard)
{
    ViewWorld world;
    const auto fields = std::make_shared<FakePasswordFieldSettings>();
    world.passwordFields = fields;
    PrivacySettingsTab tab(world.context());
    tab.show();
    auto *toggle = tab.findChild<QCheckBox *>();
    ASSERT_NE(toggle, nullptr);
    EXPECT_EQ(toggle->text(), u"Protect password fields"_s);
    EXPECT_TRUE(toggle->isChecked());
    toggle->click();
    EXPECT_FALSE(fields->guarded);
    fields->setGuarded(true);
    settle();
    EXPECT_TRUE(toggle->isChecked());
}

TEST(PrivacyTab, offersOnlySettingsThatDesktopHas)
{
    const auto offered = [](ViewWorld &world) {
        PrivacySettingsTab tab(world.context());
        tab.show();
        qsizetype count = 0;
        for (const auto *button : tab.findChildren<QPushButton *>()) {
            count += button->text() == u"Open Settings…"_s && button->isVisible() ? 1 : 0;
        }
        return count;
    };
    ViewWorld world;
    EXPECT_EQ(offered(world), 3);
    world.canOpenSettings = [](SettingsPane pane) { return pane == SettingsPane::Microphone; };
    EXPECT_EQ(offered(world), 2);
    world.canOpenSettings = [](SettingsPane) { return false; };
    EXPECT_EQ(offered(world), 0);
}

TEST(PrivacyTab, asksTheDesktopWheneverShown)
{
    ViewWorld world;
    const auto extension = std::make_shared<FakeDesktopExtension>(DesktopExtension::Status{u"Enabled."_s});
    world.desktopExtension = extension;
    PrivacySettingsTab tab(world.context());
    EXPECT_TRUE(shows(tab, u"Enabled."_s));
    tab.setAttribute(Qt::WA_DontShowOnScreen);
    tab.show();
    EXPECT_EQ(extension->refreshes, 2);
}

TEST(PrivacyTab, offersDesktopsKeyBesideExtension)
{
    ViewWorld world;
    world.desktopExtension = std::make_shared<FakeDesktopExtension>(DesktopExtension::Status{u"Enabled."_s});
    auto context = world.context();
    const auto key =
        std::make_shared<FakeDesktopExtension>(DesktopExtension::Status{u"Refused."_s, true, true, u"Ask again"_s});
    context.desktopKey = key;
    PrivacySettingsTab tab(context);
    EXPECT_TRUE(shows(tab, u"Enabled."_s));
    EXPECT_TRUE(shows(tab, u"Refused."_s));
    buttonNamed(tab, u"Ask again"_s)->click();
    EXPECT_EQ(key->enablings, 1);
}

TEST(PrivacyTab, doesNotCallAMissingMicrophoneGranted)
{
    ViewWorld world;
    const auto microphone = std::make_shared<FakeMicrophoneSettings>();
    world.microphone = microphone;
    PrivacySettingsTab tab(world.context());
    EXPECT_THAT(accessibleNames(tab, QAccessible::Client), testing::Not(testing::Contains(u"Not found"_s)));
    microphone->isThere = false;
    microphone->wrong = u"No microphone was found."_s;
    microphone->change();
    settle();
    const auto signs = tab.findChildren<QWidget *>();
    const auto named = [&signs](const QString &name) {
        return std::count_if(signs.begin(), signs.end(),
                             [&name](const auto *sign) { return sign->accessibleName() == name; });
    };
    EXPECT_EQ(named(u"Not found"_s), 1);
    EXPECT_EQ(named(u"Granted"_s), 2);
    EXPECT_TRUE(shows(tab, microphone->wrong));
}

} // namespace talmo::test
