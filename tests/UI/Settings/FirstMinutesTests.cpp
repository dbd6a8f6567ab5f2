// The sections with which a new user sets Talmo up: the key, the microphone, the language, and the welcome.

#include "Support/FakeDesktopExtension.h"
#include "Support/FakeHotkeySettings.h"
#include "Support/FakeLanguageSettings.h"
#include "Support/FakeMicrophoneSettings.h"
#include "Support/FakeRecogniserSettings.h"
#include "UI/AccessibleView.h"
#include "UI/Settings/DesktopExtensionSection.h"
#include "UI/Settings/HotkeyRows.h"
#include "UI/Style/KeyCap.h"
#include "UI/Settings/LanguageSection.h"
#include "UI/Style/LevelBar.h"
#include "UI/Settings/MicrophoneSection.h"
#include "UI/Settings/PrivacySettingsTab.h"
#include "UI/Settings/SettingsWindow.h"
#include "UI/Settings/WelcomeView.h"
#include "UI/ViewWorld.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTranslator>
#include <QVBoxLayout>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

QPushButton *buttonNamed(QWidget &view, const QString &text)
{
    for (auto *button : view.findChildren<QPushButton *>()) {
        if (button->text() == text && button->isVisibleTo(&view)) {
            return button;
        }
    }
    return nullptr;
}

/// For classes without a meta-object, which findChild() does not tell apart.
template <typename View>
View *childOf(const QWidget &parent)
{
    for (auto *child : parent.findChildren<QWidget *>()) {
        if (auto *view = dynamic_cast<View *>(child)) {
            return view;
        }
    }
    return nullptr;
}

bool shows(QWidget &view, const QString &text)
{
    const auto labels = view.findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel *label) { return label->text().contains(text) && label->isVisibleTo(&view); });
}

class MicrophoneSectionTest : public testing::Test {
protected:
    void show(MicrophoneSection::Listening listening)
    {
        section = std::make_unique<MicrophoneSection>(settings, listening);
        section->setAttribute(Qt::WA_DontShowOnScreen);
        section->show();
        settle();
    }
    std::shared_ptr<FakeMicrophoneSettings> settings = std::make_shared<FakeMicrophoneSettings>();
    std::unique_ptr<MicrophoneSection> section;
};

} // namespace

TEST_F(MicrophoneSectionTest, choosesAMicrophone)
{
    show(MicrophoneSection::Listening::WhenAsked);
    auto *picker = section->findChild<QComboBox *>();
    ASSERT_EQ(picker->count(), 3);
    picker->setCurrentIndex(2);
    Q_EMIT picker->activated(2);
    EXPECT_THAT(settings->calls, ElementsAre("choose headset"));
}

TEST_F(MicrophoneSectionTest, settingsListenOnlyWhenAsked)
{
    show(MicrophoneSection::Listening::WhenAsked);
    EXPECT_EQ(settings->followers, 1);
    EXPECT_FALSE(settings->isOn);
    buttonNamed(*section, u"Test"_s)->click();
    settle();
    EXPECT_TRUE(settings->isOn);
    settings->beLoud(0.6);
    EXPECT_EQ(childOf<LevelBar>(*section)->level(), 0.6);
    section->hide();
    EXPECT_FALSE(settings->isOn);
    EXPECT_EQ(settings->followers, 0);
}

TEST_F(MicrophoneSectionTest, welcomeListensWhileShown)
{
    show(MicrophoneSection::Listening::WhileShown);
    EXPECT_TRUE(settings->isOn);
    EXPECT_EQ(buttonNamed(*section, u"Test"_s), nullptr);
    section->hide();
    EXPECT_FALSE(settings->isOn);
}

TEST_F(MicrophoneSectionTest, showsProblemAndOffersNoTestWithoutMicrophone)
{
    settings->wrong = u"No microphone was found."_s;
    settings->isThere = false;
    show(MicrophoneSection::Listening::WhenAsked);
    EXPECT_TRUE(shows(*section, settings->wrong));
    EXPECT_FALSE(buttonNamed(*section, u"Test"_s)->isEnabled());
}

namespace {

class HotkeyRowsTest : public testing::Test {
protected:
    HotkeyRowsTest()
    {
        rows.setAttribute(Qt::WA_DontShowOnScreen);
        rows.show();
        settle();
    }
    std::shared_ptr<FakeHotkeySettings> settings = std::make_shared<FakeHotkeySettings>();
    HotkeyRows rows{settings};
};

} // namespace

TEST_F(HotkeyRowsTest, waitsForAKeyUntilPressedAgain)
{
    buttonNamed(rows, u"Press the key you want"_s)->click();
    settle();
    EXPECT_THAT(settings->calls, ElementsAre("replace"));
    EXPECT_FALSE(buttonNamed(rows, u"Add another"_s)->isEnabled());
    buttonNamed(rows, u"Press a key…"_s)->click();
    settle();
    EXPECT_EQ(settings->waiting, std::nullopt);
    buttonNamed(rows, u"Add another"_s)->click();
    EXPECT_THAT(settings->calls, ElementsAre("replace", "add"));
}

TEST_F(HotkeyRowsTest, theKeyWaitedForDoesNotActInTheWindow)
{
    auto *button = buttonNamed(rows, u"Press the key you want"_s);
    button->click();
    settle();
    QTest::keyClick(button, Qt::Key_Space); // Would press the button again.
    settle();
    EXPECT_NE(settings->waiting, std::nullopt);
    rows.hide();
    EXPECT_EQ(settings->waiting, std::nullopt);
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_THAT(settings->calls, ElementsAre("replace", "replace"));
}

TEST_F(HotkeyRowsTest, oneOfSeveralKeysCanBeRemoved)
{
    EXPECT_EQ(buttonNamed(rows, u"Remove"_s), nullptr);
    settings->all.append({u"F9"_s, u"F9"_s});
    settings->change();
    settle();
    auto *remove = dynamic_cast<QPushButton *>(accessibleWidget(rows, QAccessible::Button, u"Remove F9"_s));
    ASSERT_NE(remove, nullptr);
    remove->click();
    settle();
    EXPECT_THAT(settings->calls, ElementsAre("remove F9"));
}

TEST_F(HotkeyRowsTest, offersAKeyToThoseWithoutTheDefault)
{
    settings->suggested = HotkeySettings::Key{u"F9"_s, u"F9"_s};
    settings->wrong = u"The settings file names a key “Contrl_R”."_s;
    settings->change();
    settle();
    EXPECT_TRUE(shows(rows, u"No Right Ctrl on your keyboard?"_s));
    EXPECT_TRUE(shows(rows, settings->wrong));
    buttonNamed(rows, u"Use F9"_s)->click();
    EXPECT_THAT(settings->calls, ElementsAre("use F9"));
}

TEST(LanguageSection, offersWaysOutOfALanguageWithoutRecogniser)
{
    const auto settings = std::make_shared<FakeLanguageSettings>();
    LanguageSection section(settings);
    EXPECT_EQ(buttonNamed(section, u"Set it up"_s), nullptr);
    settings->wrong = u"Dictating in German needs another recogniser."_s;
    settings->change();
    settle();
    EXPECT_TRUE(shows(section, settings->wrong));
    buttonNamed(section, u"Set it up"_s)->click();
    buttonNamed(section, u"Use English for now"_s)->click();
    EXPECT_THAT(settings->calls, ElementsAre("set up", "use English"));
    settings->isToBeHad = false;
    settings->change();
    settle();
    EXPECT_FALSE(buttonNamed(section, u"Set it up"_s)->isEnabled());
}

namespace {

class WelcomeTest : public testing::Test {
protected:
    WelcomeTest()
    {
        world.settings->setHotkeyDisplayName(u"Right Ctrl"_s);
        world.microphone = microphone;
        world.hotkeys = std::make_shared<FakeHotkeySettings>();
        world.language = std::make_shared<FakeLanguageSettings>();
        world.recogniser = recogniser;
    }
    ViewWorld world;
    std::shared_ptr<FakeMicrophoneSettings> microphone = std::make_shared<FakeMicrophoneSettings>();
    std::shared_ptr<FakeRecogniserSettings> recogniser = std::make_shared<FakeRecogniserSettings>();
    std::shared_ptr<FakeScreens> screens = std::make_shared<FakeScreens>();
};

} // namespace

TEST_F(WelcomeTest, givesWayToTheSettingsAndListensNoLonger)
{
    SettingsWindow window(world.context(), screens);
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.openWelcome();
    settle();
    EXPECT_TRUE(microphone->isOn);
    EXPECT_EQ(window.windowTitle(), u"Welcome to Talmo"_s);
    EXPECT_FALSE(window.findChild<QTabBar *>()->isVisible());
    window.open(); // As a second start does.
    settle();
    EXPECT_FALSE(microphone->isOn);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(childOf<WelcomeView>(window), nullptr);
    EXPECT_TRUE(window.findChild<QTabBar *>()->isVisible());
    EXPECT_EQ(window.windowTitle(), u"Talmo Settings"_s);
}

TEST_F(WelcomeTest, canBeTriedWithoutAClick)
{
    SettingsWindow window(world.context(), screens);
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.openWelcome();
    settle();
    EXPECT_EQ(window.focusWidget(), window.findChild<QPlainTextEdit *>());
}

TEST_F(WelcomeTest, isGoneOnceItsWindowWasClosed)
{
    SettingsWindow window(world.context(), screens);
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.openWelcome();
    settle();
    buttonNamed(window, u"Done"_s)->click();
    settle();
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(microphone->isOn);
    window.open();
    settle();
    EXPECT_TRUE(window.findChild<QTabBar *>()->isVisible());
}

TEST_F(WelcomeTest, namesTheKeyAndWhatIsMissing)
{
    WelcomeView view(world.context(), [] {});
    EXPECT_TRUE(shows(view, u"Hold Right Ctrl, speak"_s));
    EXPECT_FALSE(shows(view, u"does not let Talmo type"_s));
    world.settings->setHotkeyDisplayName(u"F9"_s);
    world.setPermissions(true, true, false);
    EXPECT_TRUE(shows(view, u"Hold F9, speak"_s));
    EXPECT_TRUE(view.findChild<QPlainTextEdit *>()->placeholderText().contains(u"hold F9"_s));
    EXPECT_TRUE(shows(view, u"does not let Talmo type"_s));
}

TEST_F(WelcomeTest, namesTheKeyInTheReadersLanguage)
{
    class German final : public QTranslator {
    public:
        QString translate(const char *, const char *source, const char *, int) const override
        {
            return QByteArray(source) == "Right Ctrl" ? u"Strg rechts"_s : QString();
        }
        bool isEmpty() const override { return false; }
    };
    const auto hotkeys = std::make_shared<FakeHotkeySettings>();
    hotkeys->suggested = {u"F9"_s, u"F9"_s};
    world.hotkeys = hotkeys;
    German german;
    QCoreApplication::installTranslator(&german);
    WelcomeView view(world.context(), [] {});
    EXPECT_EQ(childOf<KeyCap>(view)->text(), u"Strg rechts"_s);
    EXPECT_TRUE(shows(view, u"Hold Strg rechts"_s));
    EXPECT_TRUE(shows(view, u"No Strg rechts on your keyboard?"_s));
    QCoreApplication::removeTranslator(&german);
}

TEST_F(WelcomeTest, offersBetterRecognitionAndShowsItsProgress)
{
    WelcomeView view(world.context(), [] {});
    EXPECT_EQ(buttonNamed(view, u"Get better recognition"_s), nullptr);
    recogniser->offered = {u"Kroko (English), 67 MB."_s, u"67 MB"_s};
    recogniser->change();
    settle();
    buttonNamed(view, u"Get better recognition"_s)->click();
    EXPECT_THAT(recogniser->calls, ElementsAre("accept offer"));
    recogniser->underWay = {u"kroko-en"_s, u"Downloading: 12 of 67 MB"_s, 0.18};
    recogniser->change();
    settle();
    EXPECT_TRUE(shows(view, u"Downloading: 12 of 67 MB"_s));
    EXPECT_EQ(buttonNamed(view, u"Get better recognition"_s), nullptr);
}

TEST_F(WelcomeTest, offersTheDesktopsExtension)
{
    const auto extension = std::make_shared<FakeDesktopExtension>(DesktopExtension::Status{u"Missing."_s, true, true});
    world.desktopExtension = extension;
    WelcomeView view(world.context(), [] {});
    EXPECT_TRUE(shows(view, u"Missing."_s));
    EXPECT_NE(buttonNamed(view, u"Enable the extension"_s), nullptr);
}

TEST_F(WelcomeTest, privacyAsksTheDesktopWheneverShown)
{
    const auto extension = std::make_shared<FakeDesktopExtension>(DesktopExtension::Status{u"Enabled."_s});
    world.desktopExtension = extension;
    PrivacySettingsTab tab(world.context());
    EXPECT_TRUE(shows(tab, u"Enabled."_s));
    tab.setAttribute(Qt::WA_DontShowOnScreen);
    tab.show();
    EXPECT_EQ(extension->refreshes, 2);
}

TEST_F(WelcomeTest, privacyDoesNotCallAMissingMicrophoneGranted)
{
    PrivacySettingsTab tab(world.context());
    EXPECT_THAT(accessibleNames(tab, QAccessible::Client), testing::Not(Contains(u"Not found"_s)));
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

namespace {

class DesktopExtensionSectionTest : public testing::Test {
protected:
    void open(DesktopExtensionSection::Shown shown)
    {
        auto *section = new DesktopExtensionSection(extension, shown);
        window.layout()->addWidget(section);
        window.setAttribute(Qt::WA_DontShowOnScreen);
        window.show();
        settle();
    }
    void change(const DesktopExtension::Status &status)
    {
        extension->setStatus(status);
        settle();
    }
    const QString missing = u"It is missing."_s;
    const QString enabled = u"It is enabled."_s;
    std::shared_ptr<FakeDesktopExtension> extension =
        std::make_shared<FakeDesktopExtension>(DesktopExtension::Status());
    QWidget window;
    QVBoxLayout layout{&window};
};

} // namespace

TEST_F(DesktopExtensionSectionTest, isEnabledByOneClick)
{
    open(DesktopExtensionSection::Shown::Always);
    EXPECT_EQ(extension->refreshes, 1);
    EXPECT_EQ(buttonNamed(window, u"Enable the extension"_s), nullptr);
    change({missing, true, true});
    EXPECT_TRUE(shows(window, missing));
    buttonNamed(window, u"Enable the extension"_s)->click();
    EXPECT_EQ(extension->enablings, 1);
    change({enabled, false, false});
    EXPECT_TRUE(shows(window, enabled));
    EXPECT_FALSE(shows(window, missing));
    EXPECT_EQ(buttonNamed(window, u"Enable the extension"_s), nullptr);
}

TEST_F(DesktopExtensionSectionTest, welcomeShowsItOnlyWhileMissing)
{
    open(DesktopExtensionSection::Shown::WhileMissing);
    change({enabled, false, false});
    EXPECT_FALSE(shows(window, enabled));
    change({missing, true, false});
    EXPECT_TRUE(shows(window, missing));
    EXPECT_EQ(buttonNamed(window, u"Enable the extension"_s), nullptr);
    change({});
    EXPECT_FALSE(shows(window, u"This desktop"_s));
    change({missing, true, false});
    EXPECT_TRUE(shows(window, missing));
}

} // namespace talmo::test
