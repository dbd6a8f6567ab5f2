// The tray icon, the panel and the settings on a real desktop.

#include "DesktopParts.h"
#include "EndToEnd/UiFixture.h"
#include "Support/NotifierHost.h"
#include "Support/Printing.h"

#include <QFile>
#include <QImage>

#include <algorithm>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

/// The margin around the card, inside its window.
constexpr int shadow = 24;
constexpr quint32 escapeKey = 0xff1b;
constexpr quint32 returnKey = 0xff0d;
constexpr quint32 endKey = 0xff57;

class UiEndToEndTest : public UiFixture {};

} // namespace

TEST_F(UiEndToEndTest, trayIconChangesShape)
{
    startTray();
    startTalmoWithIcon();
    const QImage idle = corner();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    EXPECT_TRUE(testbed::pollUntil([&] { return corner() != idle; }, timeout));
    const QImage recording = corner();
    keyboard.release(key);
    ASSERT_TRUE(talmoSays(u"state: error"_s));
    EXPECT_TRUE(testbed::pollUntil([&] { return corner() != recording && corner() != idle; }, timeout));
}

TEST_F(UiEndToEndTest, iconIsLegibleOnLightTrayWithDarkTheme)
{
    desktop.storeSettings({{u"linux.languageModelAddress"_s, u"off"_s}, {u"linux.colorScheme"_s, u"dark"_s}});
    startTray();
    startTalmoWithIcon();
    const auto darkest = [this] {
        const QImage picture = corner();
        int least = 255;
        for (int y = 2; y < 22; ++y) {
            for (int x = 8; x < 28; ++x) {
                least = std::min(least, qGray(picture.pixel(x, y)));
            }
        }
        return least;
    };
    constexpr int dark = 90;
    EXPECT_TRUE(testbed::pollUntil([&] { return darkest() < dark; }, timeout));
}

TEST_F(UiEndToEndTest, addsIconToLateTrayAndReportsAbsenceOnce)
{
    startTalmo();
    ASSERT_TRUE(talmo->waitForLine(u"there is no tray for the icon yet"_s, timeout));
    const QImage before = corner();
    startTray();
    EXPECT_TRUE(testbed::pollUntil([&] { return corner() != before; }, timeout));
    tray.reset();
    EXPECT_TRUE(testbed::pollUntil([&] { return corner() == before; }, timeout));
    startTray();
    EXPECT_TRUE(testbed::pollUntil([&] { return corner() != before; }, timeout));
    EXPECT_EQ(talmo->output().count(u"there is no tray"_s), 1);
}

TEST_F(UiEndToEndTest, notifierHostGetsIconAndItsChanges)
{
    const auto bus = testbed::startBus(environment);
    NotifierHost host;
    startTalmo();
    ASSERT_TRUE(testbed::waitUntil([&host] { return !host.item().isEmpty(); }, timeout));
    const QByteArray idle = host.iconPixels();
    EXPECT_FALSE(idle.isEmpty());
    const int before = host.iconChanges();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    EXPECT_TRUE(testbed::waitUntil([&] { return host.iconChanges() > before; }, timeout));
    EXPECT_NE(host.iconPixels(), idle);
    EXPECT_FALSE(host.itemProperty(u"Menu"_s).isNull());
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"state: error"_s));
}

TEST_F(UiEndToEndTest, lateOrRestartedNotifierHostGetsIcon)
{
    const auto bus = testbed::startBus(environment);
    startTalmo();
    ASSERT_TRUE(talmo->waitForLine(u"there is no tray for the icon yet"_s, timeout));
    auto host = std::make_unique<NotifierHost>();
    EXPECT_TRUE(testbed::waitUntil([&host] { return host->registrations() > 0; }, timeout));
    host.reset();
    host = std::make_unique<NotifierHost>();
    EXPECT_TRUE(testbed::waitUntil([&host] { return host->registrations() > 0; }, timeout));
}

TEST_F(UiEndToEndTest, panelOpensInPointersCornerWithNotifierHost)
{
    const auto bus = testbed::startBus(environment);
    NotifierHost host;
    openQtWindow();
    startTalmo();
    ASSERT_TRUE(testbed::waitUntil([&host] { return !host.item().isEmpty(); }, timeout));
    pointer.moveTo({screen.width() - 20, screen.height() - 20});
    host.activate(screen.width() - 20, screen.height() - 20);
    ASSERT_TRUE(cardComes());
    const QRect room = cards().first().geometry;
    EXPECT_EQ(room.x() + room.width() - shadow, screen.width() - 6);
    EXPECT_EQ(room.y() + room.height() - shadow, screen.height() - 6);
    EXPECT_EQ(desktop.activeWindowTitle(), u"Target"_s);
    keyboard.tap(escapeKey);
    EXPECT_TRUE(cardGoes());
}

TEST_F(UiEndToEndTest, panelOpensAtIconAndClosesOnEscapeOrClick)
{
    startTray();
    openQtWindow();
    startTalmoWithIcon();
    desktop.takeActiveWindowChanges();
    ASSERT_TRUE(openPanel());
    EXPECT_GE(cards().first().geometry.y() + shadow, 24);
    EXPECT_LT(cards().first().geometry.y() + shadow, 60);
    // Under load the first tap may arrive before the panel has the focus, so tap again.
    EXPECT_TRUE(testbed::pollUntil(
        [this] {
            keyboard.tap(escapeKey);
            return cards().isEmpty();
        },
        timeout));
    ASSERT_TRUE(openPanel());
    pointer.clickAt({100, 500});
    EXPECT_TRUE(cardGoes());
    ASSERT_TRUE(openPanel());
    pointer.clickAt(icon);
    EXPECT_TRUE(cardGoes());
    EXPECT_EQ(desktop.takeActiveWindowChanges(), 0);
}

TEST_F(UiEndToEndTest, dictationStartedInPanelGoesToActiveWindow)
{
    startTray();
    openQtWindow();
    startTalmoWithIcon();
    ASSERT_TRUE(openPanel());
    keyboard.tap(returnKey); // First row: start.
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    pointer.clickAt(icon);
    ASSERT_TRUE(testbed::pollUntil([this] { return cards().size() == 2; }, timeout)); // The other is the overlay.
    keyboard.tap(returnKey);                                                          // First row: stop.
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_EQ(desktop.activeWindowTitle(), u"Target"_s);
}

TEST_F(UiEndToEndTest, insertionClosesPanelFirst)
{
    startTray();
    openQtWindow();
    startTalmoWithIcon();
    ASSERT_TRUE(openPanel());
    testbed::ChildProcess insert(QStringLiteral(TALMO_BIN "/talmoctl"), {u"insert"_s}, environment);
    insert.writeLine(u"Not into the panel."_s);
    insert.closeInput();
    EXPECT_TRUE(windowShows(u"Not into the panel."_s));
    EXPECT_TRUE(cardGoes());
}

TEST_F(UiEndToEndTest, insertionClosesPlainMenuFirst)
{
    startTray();
    openQtWindow();
    startTalmoWithIcon();
    pointer.moveTo(icon);
    pointer.click(3);
    ASSERT_TRUE(cardComes());
    testbed::ChildProcess insert(QStringLiteral(TALMO_BIN "/talmoctl"), {u"insert"_s}, environment);
    insert.writeLine(u"Not into the menu."_s);
    insert.closeInput();
    EXPECT_TRUE(windowShows(u"Not into the menu."_s));
    EXPECT_TRUE(cardGoes());
}

TEST_F(UiEndToEndTest, quitInPanelQuitsTalmo)
{
    startTray();
    startTalmoWithIcon();
    ASSERT_TRUE(openPanel());
    keyboard.tap(endKey);
    keyboard.tap(returnKey);
    EXPECT_TRUE(testbed::waitUntil([this] { return !talmo->isRunning(); }, timeout));
}

TEST_F(UiEndToEndTest, secondInstanceOpensSettingsOfFirstAndExits)
{
    openQtWindow();
    startTalmo();
    for (int round = 0; round < 2; ++round) {
        testbed::ChildProcess second(QStringLiteral(TALMO_BIN "/talmo"), {}, environment);
        EXPECT_TRUE(second.waitForLine(u"Talmo is already running; opened its settings window"_s, timeout));
        EXPECT_EQ(second.terminate(), 0);
        EXPECT_TRUE(desktop.waitForActiveWindow(u"Talmo Settings"_s, timeout));
        keyboard.tap(escapeKey);
        EXPECT_TRUE(desktop.waitForActiveWindow(u"Target"_s, timeout));
    }
    EXPECT_TRUE(talmo->isRunning());
    // Dictation still works.
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

TEST_F(UiEndToEndTest, nextInstanceIsFirstAfterCrash)
{
    startTalmo();
    talmo->kill();
    ASSERT_TRUE(testbed::waitUntil([this] { return !talmo->isRunning(); }, timeout));
    startTalmo();
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(UiEndToEndTest, dictatesIntoOwnSettingsWindow)
{
    startTalmo();
    testbed::ChildProcess second(QStringLiteral(TALMO_BIN "/talmo"), {}, environment);
    ASSERT_TRUE(desktop.waitForActiveWindow(u"Talmo Settings"_s, timeout));
    // To the dictionary tab and its text field.
    keyboard.press(testbed::VirtualKeyboard::controlLeft);
    keyboard.tap(testbed::VirtualKeyboard::tab);
    keyboard.release(testbed::VirtualKeyboard::controlLeft);
    keyboard.tap(testbed::VirtualKeyboard::tab);
    keyboard.tap(testbed::VirtualKeyboard::tab);
    dictate(u"hello world"_s);
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    keyboard.tap(returnKey);
    EXPECT_TRUE(testbed::pollUntil(
        [this] {
            QFile file(desktop.folder() + u"/config/talmo/settings.json"_s);
            return file.open(QFile::ReadOnly) && file.readAll().contains("Hello world.");
        },
        timeout));
}

} // namespace talmo::test
