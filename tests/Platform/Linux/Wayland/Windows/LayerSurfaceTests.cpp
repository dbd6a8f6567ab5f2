// The overlay's surface, by what a picture of the screen shows.

#include "Platform/Linux/Wayland/Windows/LayerSurface.h"

#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "WaylandDesktop.h"

#include <gtest/gtest.h>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

class LayerSurfaceTest : public testing::Test {
protected:
    static constexpr QSize size{300, 80};
    static constexpr int bottomMargin = 90;
    static constexpr QRgb red = 0xffff0000;

    void SetUp() override
    {
        if (!testbed::WaylandDesktop::isInstalled()) {
            GTEST_SKIP() << "sway is not installed";
        }
        desktop.emplace();
        session = WaylandSession::open();
        ASSERT_NE(session, nullptr);
    }
    void TearDown() override
    {
        if (surface) {
            run([this] { surface.reset(); });
        }
    }
    void run(const std::function<void()> &work) { session->executor().call(work).waitForFinished(); }
    void showRed()
    {
        run([this] {
            surface = std::make_unique<LayerSurface>(*session, [](double) {});
            scale = surface->scale();
            QImage image((QSizeF(size) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
            image.fill(red);
            surface->show(size, bottomMargin);
            surface->setImage(image);
        });
    }
    /// The red part of the screen, in pixels.
    QRect redArea()
    {
        const QImage screen = desktop->screenshot();
        QRect area;
        for (int y = 0; y < screen.height(); ++y) {
            for (int x = 0; x < screen.width(); ++x) {
                if (screen.pixel(x, y) == red) {
                    area |= QRect(x, y, 1, 1);
                }
            }
        }
        return area;
    }
    bool isRedAt(const QRect &place)
    {
        return testbed::pollUntil([&] { return redArea() == place; }, 10s);
    }
    std::unique_ptr<testbed::ChildProcess> openWindow()
    {
        auto window = std::make_unique<testbed::ChildProcess>(QStringLiteral(TALMO_BIN "/talmo-gtk-window"),
                                                              QStringList(), desktop->environment());
        EXPECT_TRUE(desktop->waitForActiveWindow(u"Target"_s, 20s));
        return window;
    }

    std::optional<testbed::WaylandDesktop> desktop;
    std::shared_ptr<WaylandSession> session;
    std::unique_ptr<LayerSurface> surface;
    double scale = 0;
};

} // namespace

TEST_F(LayerSurfaceTest, showsPictureAtBottomCentreAndHidesIt)
{
    showRed();
    EXPECT_EQ(scale, 1);
    EXPECT_TRUE(isRedAt(QRect((1024 - 300) / 2, 640 - 90 - 80, 300, 80)));
    run([this] { surface->hide(); });
    EXPECT_TRUE(isRedAt(QRect()));
    run([this] { surface->show(size, bottomMargin); });
    EXPECT_TRUE(isRedAt(QRect((1024 - 300) / 2, 640 - 90 - 80, 300, 80))) << "with the last picture";
}

TEST_F(LayerSurfaceTest, fillsItsPlaceAtFractionalScale)
{
    desktop->ask({u"output"_s, u"HEADLESS-1"_s, u"scale"_s, u"1.6"_s});
    showRed();
    EXPECT_EQ(scale, 1.6);
    EXPECT_TRUE(isRedAt(QRect((1024 - 480) / 2, 640 - 144 - 128, 480, 128)));
}

TEST_F(LayerSurfaceTest, neverTakesFocus)
{
    const auto window = openWindow();
    showRed();
    ASSERT_TRUE(testbed::pollUntil([this] { return !redArea().isEmpty(); }, 10s));
    EXPECT_EQ(desktop->activeWindowTitle(), u"Target"_s);
}

TEST_F(LayerSurfaceTest, clicksGoThrough)
{
    const auto left = openWindow();
    testbed::ChildProcess right(u"foot"_s, {u"--title"_s, u"Right"_s, u"cat"_s}, desktop->environment());
    ASSERT_TRUE(desktop->waitForActiveWindow(u"Right"_s, 20s));
    showRed();
    ASSERT_TRUE(testbed::pollUntil([this] { return !redArea().isEmpty(); }, 10s));
    // Under the left half of the picture.
    for (const auto &command :
         {u"seat - cursor set 420 510"_s, u"seat - cursor press button1"_s, u"seat - cursor release button1"_s}) {
        desktop->ask({command});
    }
    EXPECT_TRUE(desktop->waitForActiveWindow(u"Target"_s, 10s));
}

} // namespace talmo::test
