#include "UI/Settings/SettingsView.h"

#include "Support/FakePasswordFieldSettings.h"
#include "UI/AccessibleView.h"
#include "UI/Settings/DictionarySettingsTab.h"
#include "UI/Settings/GeneralSettingsTab.h"
#include "UI/Settings/PrivacySettingsTab.h"
#include "UI/Settings/SettingsTabBar.h"
#include "UI/Settings/SettingsWindow.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

namespace talmo::test {

namespace {

QStringList symbols(const QWidget &view)
{
    QStringList names;
    for (const auto *label : view.findChildren<QWidget *>()) {
        if (const auto *symbol = dynamic_cast<const SymbolLabel *>(label); symbol != nullptr && symbol->isVisible()) {
            names.append(symbol->symbol());
        }
    }
    return names;
}

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

class DictionaryTabTest : public testing::Test {
protected:
    DictionaryTabTest()
    {
        world.settings->setDictionaryWords({u"Talmo"_s, u"Terraform"_s, u"Kubernetes"_s});
        settle();
        tab.show();
    }
    QLineEdit &field() { return *tab.findChild<QLineEdit *>(); }
    QListWidget &list() { return *tab.findChild<QListWidget *>(); }
    QStringList shown()
    {
        QStringList words;
        for (int row = 0; row < list().count(); ++row) {
            words.append(list().item(row)->text());
        }
        return words;
    }
    void select(std::initializer_list<int> rows)
    {
        list().clearSelection();
        for (const int row : rows) {
            list().item(row)->setSelected(true);
        }
    }

    ViewWorld world;
    DictionarySettingsTab tab{world.context()};
};

class PrivacyTabTest : public testing::Test {
protected:
    PrivacyTabTest() { tab.show(); }

    ViewWorld world;
    PrivacySettingsTab tab{world.context()};
};

} // namespace

TEST(SettingsView, hasThreeTabsInOrder)
{
    ViewWorld world;
    SettingsView view(world.context());
    view.show();
    EXPECT_EQ(accessibleNames(view, QAccessible::PageTab), (QStringList{u"General"_s, u"Dictionary"_s, u"Privacy"_s}));
    const auto *bar = view.findChild<QTabBar *>();
    EXPECT_EQ(bar->tabData(0).toString(), u"gearshape"_s);
    EXPECT_EQ(bar->tabData(1).toString(), u"text.book.closed"_s);
    EXPECT_EQ(bar->tabData(2).toString(), u"lock.shield"_s);
}

TEST(SettingsView, keyboardSwitchesTabs)
{
    ViewWorld world;
    SettingsView view(world.context());
    view.show();
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    auto *bar = view.findChild<QTabBar *>();
    QTest::keyClick(&view, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(bar->currentIndex(), 1);
    EXPECT_TRUE(view.findChild<QListWidget *>()->isVisible());
    QTest::keyClick(&view, Qt::Key_PageUp, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(bar->currentIndex(), 2);
    bar->setFocus();
    QTest::keyClick(bar, Qt::Key_Left);
    EXPECT_EQ(bar->currentIndex(), 1);
}

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

TEST_F(DictionaryTabTest, hasExpectedTexts)
{
    EXPECT_EQ(
        accessibleNames(tab, QAccessible::StaticText),
        (QStringList{
            u"Words and phrases you add here are passed to the cleanup step as context so they're preserved exactly, instead of being \"corrected\" away."_s,
            u"Each is heard as well as written your way."_s}));
    EXPECT_EQ(field().placeholderText(), u"Add a word or phrase"_s);
    EXPECT_EQ(shown(), (QStringList{u"Talmo"_s, u"Terraform"_s, u"Kubernetes"_s}));
}

TEST_F(DictionaryTabTest, returnAddsTrimmedWordAndClearsField)
{
    QTest::keyClicks(&field(), u"  Cloud Formation "_s);
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_EQ(world.settings->dictionaryWords().last(), u"Cloud Formation"_s);
    EXPECT_EQ(shown().last(), u"Cloud Formation"_s);
    EXPECT_EQ(field().text(), QString());
}

TEST_F(DictionaryTabTest, blankInputAddsNothingAndIsCleared)
{
    QTest::keyClicks(&field(), u"   "_s);
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_EQ(world.settings->dictionaryWords().size(), 3);
    EXPECT_EQ(field().text(), QString());
}

TEST_F(DictionaryTabTest, deleteKeyRemovesSelection)
{
    select({0, 2});
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(world.settings->dictionaryWords(), QStringList{u"Terraform"_s});
    EXPECT_EQ(shown(), QStringList{u"Terraform"_s});
    select({0});
    QTest::keyClick(&list(), Qt::Key_Backspace);
    EXPECT_TRUE(world.settings->dictionaryWords().isEmpty());
    QTest::keyClick(&list(), Qt::Key_Delete); // The list is empty; nothing happens.
    EXPECT_TRUE(world.settings->dictionaryWords().isEmpty());
}

TEST_F(DictionaryTabTest, deleteButtonIsEnabledOnlyWithSelection)
{
    auto *remove = qobject_cast<QToolButton *>(accessibleWidget(tab, QAccessible::Button, u"Delete"_s));
    ASSERT_NE(remove, nullptr);
    EXPECT_FALSE(remove->isEnabled());
    select({1});
    EXPECT_TRUE(remove->isEnabled());
    remove->click();
    EXPECT_EQ(world.settings->dictionaryWords(), (QStringList{u"Talmo"_s, u"Kubernetes"_s}));
    // The next word is selected, so that several can be deleted in a row.
    EXPECT_EQ(list().currentRow(), 1);
}

TEST_F(DictionaryTabTest, removesEqualWordsByPosition)
{
    world.settings->setDictionaryWords({u"same"_s, u"other"_s, u"same"_s});
    settle();
    select({2});
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(world.settings->dictionaryWords(), (QStringList{u"same"_s, u"other"_s}));
}

TEST_F(DictionaryTabTest, followsSettingAndKeepsSelectionIfUnchanged)
{
    select({1});
    world.settings->setConciseTextEnabled(true);
    settle();
    EXPECT_EQ(list().selectedItems().size(), 1);
    world.settings->setDictionaryWords({u"only"_s});
    settle();
    EXPECT_EQ(shown(), QStringList{u"only"_s});
}

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

TEST(SettingsWindow, opensCentredWithCurrentValues)
{
    ViewWorld world;
    const auto screens = std::make_shared<FakeScreens>();
    SettingsWindow window(world.context(), screens);
    world.authorization->microphone = 2;
    window.open();
    settle();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(world.permissions->microphoneStatus(), SimpleStatus::Denied);
    EXPECT_GE(world.availabilityRefreshes, 1);
    EXPECT_NEAR(window.geometry().center().x(), 500, 2);
    EXPECT_LE(window.height(), 800);
}

TEST(SettingsWindow, isNoHigherThanTheScreen)
{
    ViewWorld world;
    const auto screens = std::make_shared<FakeScreens>();
    screens->all = {{QRect(0, 0, 800, 480), QRect(0, 0, 800, 450)}};
    SettingsWindow window(world.context(), screens);
    window.open();
    EXPECT_LE(window.height(), 450);
}

TEST(SettingsWindow, escapeClosesIt)
{
    ViewWorld world;
    SettingsWindow window(world.context(), std::make_shared<FakeScreens>());
    window.open();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    window.open();
    EXPECT_TRUE(window.isVisible());
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

} // namespace talmo::test
