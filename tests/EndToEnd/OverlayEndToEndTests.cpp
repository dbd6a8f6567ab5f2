// The overlay on a real desktop: where it is, in front of what, and never with the focus.

#include "DesktopParts.h"
#include "EndToEnd/UiFixture.h"
#include "Support/Printing.h"

#include <QImage>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

/// The margin around the card, inside its window.
constexpr int shadow = 24;

class OverlayEndToEndTest : public UiFixture {};

} // namespace

TEST_F(OverlayEndToEndTest, overlayNeverTakesFocus)
{
    compositor = testbed::startCompositor(environment);
    openQtWindow();
    startTalmo();
    desktop.takeActiveWindowChanges();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    ASSERT_TRUE(cardComes());
    EXPECT_TRUE(cardIsInFront());
    const QRect room = cards().first().geometry;
    EXPECT_NEAR(room.center().x(), screen.width() / 2, 1);
    EXPECT_EQ(room.y() + room.height() - shadow, screen.height() - 90);
    speak(u"hello world"_s);
    keyboard.release(key);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_TRUE(cardGoes());
    EXPECT_EQ(desktop.takeActiveWindowChanges(), 0);
    EXPECT_EQ(desktop.activeWindowTitle(), u"Target"_s);
}

TEST_F(OverlayEndToEndTest, overlayStaysAboveFullScreenAndLaterWindows)
{
    openWindow(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Target"_s, u"0"_s, u"fullscreen"_s});
    ASSERT_TRUE(testbed::pollUntil([this] { return isSomethingFullScreen(); }, timeout));
    startTalmo();
    desktop.takeActiveWindowChanges();
    doubleTap();
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    ASSERT_TRUE(cardComes());
    EXPECT_TRUE(cardIsInFront());
    EXPECT_EQ(desktop.takeActiveWindowChanges(), 0);
    testbed::ChildProcess other(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Other"_s, u"0"_s, u"fullscreen"_s},
                                environment);
    ASSERT_TRUE(desktop.waitForActiveWindow(u"Other"_s, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return cardIsInFront(); }, timeout));
    keyboard.tap(key);
    EXPECT_TRUE(talmoSays(u"state: error"_s)); // No speech.
}

TEST_F(OverlayEndToEndTest, overlayIsOnPointersScreenAboveItsPanel)
{
    const auto addScreen = [this](const QString &name, const QString &place, const QString &output) {
        testbed::ChildProcess xrandr(u"xrandr"_s, {u"--setmonitor"_s, name, place, output}, environment);
        testbed::waitUntil([&xrandr] { return !xrandr.isRunning(); }, timeout);
    };
    addScreen(u"left"_s, u"600/160x640/170+0+0"_s, u"screen"_s);
    addScreen(u"right"_s, u"424/110x500/130+600+0"_s, u"none"_s);
    // The bar is at the desktop's lower edge, which only the left screen reaches.
    tray = testbed::startTray(environment, {u"--edge"_s, u"bottom"_s, u"--align"_s, u"left"_s, u"--height"_s, u"30"_s});
    openQtWindow();
    startTalmo();
    const auto footUnder = [this](QPoint place) {
        pointer.moveTo(place);
        doubleTap();
        EXPECT_TRUE(talmoSays(u"state: recording"_s));
        EXPECT_TRUE(cardComes());
        const QRect room = cards().isEmpty() ? QRect() : cards().first().geometry;
        keyboard.tap(key);
        EXPECT_TRUE(talmoSays(u"state: error"_s));
        testbed::sleepFor(400ms);
        EXPECT_TRUE(cardGoes());
        return QPoint(room.center().x(), room.y() + room.height() - shadow);
    };
    const QPoint right = footUnder({800, 300});
    EXPECT_NEAR(right.x(), 600 + 212, 1);
    EXPECT_EQ(right.y(), 500 - 90);
    const QPoint left = footUnder({100, 300});
    EXPECT_NEAR(left.x(), 300, 1);
    EXPECT_EQ(left.y(), 640 - 30 - 90);
}

TEST_F(OverlayEndToEndTest, scalesToTwiceTheSizeOnHighDpiScreen)
{
    environment.insert(u"QT_SCALE_FACTOR"_s, u"2"_s);
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(cardComes());
    const QRect room = cards().first().geometry;
    EXPECT_NEAR(room.center().x(), screen.width() / 2, 2);
    EXPECT_EQ(room.y() + room.height() - 2 * shadow, screen.height() - 2 * 90);
    keyboard.release(key);
}

TEST_F(OverlayEndToEndTest, cardIsShapedWithoutCompositor)
{
    openWindow(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Target"_s, u"0"_s, u"fullscreen"_s});
    startTalmo();
    const auto cornerOf = [this](const QRect &card) { return desktop.screenshot().pixelColor(card.topLeft()); };
    keyboard.press(key);
    ASSERT_TRUE(cardComes());
    const int bottom = screen.height() - 90;
    const QRect card(QPoint(screen.width() / 2 - 110, bottom - 50), QPoint(screen.width() / 2 + 109, bottom - 1));
    // The window behind is white: it shows at the card's corner but not in its middle.
    EXPECT_TRUE(testbed::pollUntil([&] { return desktop.screenshot().pixelColor(card.center()) != QColor(Qt::white); },
                                   timeout));
    const QImage picture = desktop.screenshot();
    EXPECT_EQ(picture.pixelColor(card.bottomLeft()), QColor(Qt::white));
    EXPECT_EQ(picture.pixelColor(card.bottomRight()), QColor(Qt::white));
    EXPECT_NE(cornerOf(card), QColor(Qt::black));
    EXPECT_EQ(picture.pixelColor(card.center().x(), bottom + 10), QColor(Qt::white)); // No shadow.
    keyboard.release(key);
}

} // namespace talmo::test
