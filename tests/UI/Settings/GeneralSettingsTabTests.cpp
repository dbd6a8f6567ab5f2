#include "UI/Settings/GeneralSettingsTab.h"

#include "UI/AccessibleView.h"
#include "UI/FindViews.h"
#include "UI/ViewWorld.h"

#include <QCheckBox>
#include <QComboBox>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class GeneralTabTest : public testing::Test {
protected:
    GeneralTabTest() { tab.show(); }
    QCheckBox &toggle(const QString &name)
    {
        return *qobject_cast<QCheckBox *>(accessibleWidget(tab, QAccessible::CheckBox, name));
    }
    QComboBox &tone() { return *tab.findChild<QComboBox *>(); }
    QStringList texts() { return accessibleNames(tab, QAccessible::StaticText); }

    ViewWorld world;
    GeneralSettingsTab tab{world.context()};
};

} // namespace

TEST_F(GeneralTabTest, hasExpectedTexts)
{
    EXPECT_EQ(
        texts(),
        (QStringList{
            u"Push-to-talk"_s,
            u"Shortcut"_s,
            u"fn"_s,
            u"Hold fn to record and release to insert, or double-tap fn for hands-free recording (press fn again to stop). Works even when Talmo isn't the frontmost app. Requires \"Press 🌐 key to: Do Nothing\" in System Settings > Keyboard, so macOS's own Globe-key action doesn't also fire. Not yet configurable in this MVP."_s,
            u"Cleanup"_s,
            u"Uses Apple's on-device Foundation Models to remove filler words and fix punctuation. When off, only basic local formatting is applied."_s,
            u"Actively trims filler, redundancy, and hedging instead of just lightly cleaning up your wording. Off by default since it rewrites more than Talmo normally does."_s,
            u"Tone"_s,
            u"Rewrites dictation to match the selected tone. Combinable with Concise text above. \"Standard\" makes no tone change."_s,
            u"Say it and it happens — like traditional dictation software:"_s,
            u"\"...as bullet points\" → formats as a bullet list"_s,
            u"\"...new paragraph...\" → starts a new paragraph"_s,
            u"\"...new line...\" → starts a new line"_s,
            u"Startup"_s,
        }));
    EXPECT_EQ(accessibleNames(tab, QAccessible::CheckBox),
              (QStringList{u"Enable AI cleanup"_s, u"Concise text"_s, u"Launch at login"_s}));
    EXPECT_EQ(symbols(tab), (QStringList{u"list.bullet"_s, u"return"_s, u"arrow.turn.down.left"_s}));
    QStringList tones;
    for (int index = 0; index < tone().count(); ++index) {
        tones.append(tone().itemText(index));
    }
    EXPECT_EQ(tones, (QStringList{u"Standard"_s, u"Professional"_s, u"Friendly"_s, u"Polite"_s}));
}

TEST_F(GeneralTabTest, eachControlWritesImmediately)
{
    toggle(u"Enable AI cleanup"_s).click();
    EXPECT_FALSE(world.settings->aiCleanupEnabled());
    toggle(u"Concise text"_s).click();
    EXPECT_TRUE(world.settings->conciseTextEnabled());
    tone().setCurrentIndex(3);
    EXPECT_EQ(world.settings->textTone(), TextTone::Polite);
    EXPECT_EQ(world.defaults->string(u"talmo.textTone"_s), u"polite"_s);
    toggle(u"Launch at login"_s).click();
    EXPECT_TRUE(world.settings->launchAtLogin());
    EXPECT_THAT(world.loginItem->calls, testing::ElementsAre("register"));
    world.loginItem->answer = LoginItemStatus::Enabled;
    toggle(u"Launch at login"_s).click();
    EXPECT_THAT(world.loginItem->calls, testing::ElementsAre("register", "unregister"));
}

TEST_F(GeneralTabTest, eachControlFollowsItsSettingWithoutWriting)
{
    world.settings->setAiCleanupEnabled(false);
    world.settings->setConciseTextEnabled(true);
    world.settings->setTextTone(TextTone::Friendly);
    world.settings->setLaunchAtLogin(true);
    world.settings->setHotkeyDisplayName(u"F13"_s);
    world.defaults->takeWrites();
    settle();
    EXPECT_FALSE(toggle(u"Enable AI cleanup"_s).isChecked());
    EXPECT_TRUE(toggle(u"Concise text"_s).isChecked());
    EXPECT_EQ(tone().currentText(), u"Friendly"_s);
    EXPECT_TRUE(toggle(u"Launch at login"_s).isChecked());
    EXPECT_TRUE(texts().contains(u"F13"_s));
    EXPECT_TRUE(world.defaults->writes.empty());
    EXPECT_TRUE(world.loginItem->calls.empty());
}

TEST_F(GeneralTabTest, modelWarningIsShownEvenWhenDisabled)
{
    const QString message = u"The on-device language model is still preparing. Try again shortly."_s;
    world.unavailability = message;
    tab.refresh();
    EXPECT_TRUE(texts().contains(message));
    EXPECT_TRUE(symbols(tab).contains(u"exclamationmark.triangle"_s));
    toggle(u"Enable AI cleanup"_s).click();
    settle();
    EXPECT_TRUE(texts().contains(message));
    world.unavailability.reset();
    tab.refresh();
    EXPECT_FALSE(texts().contains(message));
    EXPECT_FALSE(symbols(tab).contains(u"exclamationmark.triangle"_s));
}

TEST_F(GeneralTabTest, bulletListsAreDimmedWithoutLanguageModel)
{
    const QString needs =
        u"Needs AI cleanup with a language model. Without one, these words are left out and no list is made."_s;
    const auto isDimmed = [this] {
        for (const auto &thing : accessibleThings(tab)) {
            if (thing.name == u"\"...as bullet points\" → formats as a bullet list"_s) {
                return !thing.isEnabled;
            }
        }
        return false;
    };
    EXPECT_FALSE(isDimmed());
    EXPECT_FALSE(texts().contains(needs));
    world.unavailability = u"The on-device language model isn't available right now."_s;
    tab.refresh();
    EXPECT_TRUE(isDimmed());
    EXPECT_TRUE(texts().contains(needs));
    world.unavailability.reset();
    tab.refresh();
    EXPECT_FALSE(isDimmed());
    toggle(u"Enable AI cleanup"_s).click();
    settle();
    EXPECT_TRUE(isDimmed());
    EXPECT_TRUE(texts().contains(needs));
}

TEST_F(GeneralTabTest, showsWhichServerAndModelGetTheText)
{
    world.server = {u"qwen2.5:7b"_s, u"127.0.0.1:11434"_s, {}};
    tab.refresh();
    EXPECT_TRUE(texts().contains(u"Your text is sent to qwen2.5:7b at 127.0.0.1:11434."_s));
    toggle(u"Enable AI cleanup"_s).click();
    settle();
    EXPECT_TRUE(texts().contains(u"While this is off, no text is sent to qwen2.5:7b at 127.0.0.1:11434."_s));
    world.server = {};
    tab.refresh();
    EXPECT_FALSE(texts().join(u'\n').contains(u"11434"_s));
}

TEST_F(GeneralTabTest, recommendsFasterModelWhileEditingIsSlow)
{
    world.server = {u"qwen2.5:7b"_s, u"127.0.0.1:11434"_s, {}};
    world.server.slowness = EditingServer::Slowness{5, u"Qwen3 4B Instruct 2507"_s, 2500, u"Apache 2.0"_s};
    tab.refresh();
    const auto advice = u"Editing took longer than 5 seconds three times. A smaller model is faster, for example "
                        "Qwen3 4B Instruct 2507 (2500 MB, Apache 2.0)."_s;
    EXPECT_TRUE(texts().contains(advice));
    world.server.slowness = EditingServer::Slowness{5, {}, 0, {}};
    tab.refresh();
    EXPECT_TRUE(texts().contains(u"Editing took longer than 5 seconds three times. It is faster with a smaller model, "
                                 "or with AI cleanup turned off."_s));
    toggle(u"Enable AI cleanup"_s).click();
    settle();
    EXPECT_FALSE(texts().join(u'\n').contains(u"three times"_s)) << "nothing is edited while it is off";
}

TEST_F(GeneralTabTest, showsWhichServersAreRefused)
{
    world.server = {{}, {}, {u"127.0.0.1:8080"_s, u"127.0.0.1:1234"_s}};
    tab.refresh();
    EXPECT_TRUE(texts().contains(
        u"Another user's program is listening at 127.0.0.1:8080, 127.0.0.1:1234. Your text is not sent to it."_s));
    EXPECT_TRUE(symbols(tab).contains(u"exclamationmark.triangle"_s));
    world.server = {};
    tab.refresh();
    EXPECT_FALSE(symbols(tab).contains(u"exclamationmark.triangle"_s));
}

TEST_F(GeneralTabTest, shortensServersModelNameAsPlainText)
{
    world.server = {u"<b>%2</b>"_s + QString(200, u'x'), u"127.0.0.1:8080"_s, {}};
    tab.refresh();
    EXPECT_TRUE(texts().contains(u"Your text is sent to <b>%2</b>"_s + QString(38, u'x') + u"… at 127.0.0.1:8080."_s));
}

TEST_F(GeneralTabTest, toggleStaysOnIfLoginItemFails)
{
    world.loginItem->isBroken = true;
    toggle(u"Launch at login"_s).click();
    settle();
    EXPECT_TRUE(toggle(u"Launch at login"_s).isChecked());
}

} // namespace talmo::test
