#include "UI/Settings/WelcomeView.h"

#include "Support/FakeDesktopExtension.h"
#include "Support/FakeHotkeySettings.h"
#include "Support/FakeLanguageSettings.h"
#include "Support/FakeMicrophoneSettings.h"
#include "Support/FakeRecogniserSettings.h"
#include "UI/FindViews.h"
#include "UI/Settings/SettingsWindow.h"
#include "UI/Style/KeyCap.h"
#include "UI/ViewWorld.h"

#include <QPlainTextEdit>
#include <QTabBar>
#include <QTranslator>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;

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

TEST_F(WelcomeTest, makesWayForSettingsAndStopsListening)
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

TEST_F(WelcomeTest, closingItsWindowRemovesIt)
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

TEST_F(WelcomeTest, tellsEveryLimitOfTheDesktop)
{
    world.limits = {u"Keys: bind one."_s, u"Text: paste it."_s};
    world.setPermissions(true, true, false);
    WelcomeView view(world.context(), [] {});
    EXPECT_TRUE(shows(view, u"Keys: bind one."_s));
    EXPECT_TRUE(shows(view, u"Text: paste it."_s));
    EXPECT_FALSE(shows(view, u"does not let Talmo type"_s)) << "the limits say so already";
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

} // namespace talmo::test
