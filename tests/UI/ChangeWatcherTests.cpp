#include "UI/ChangeWatcher.h"

#include "Support/TestLoop.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

class ChangeWatcherTest : public testing::Test {
protected:
    Observable source;
    QWidget window;
    QWidget *view = new QWidget(&window);
    int refreshes = 0;
    ChangeWatcher watcher{source, [this] { ++refreshes; }, view};

    /// The number of refreshes that these announcements cause.
    int announce(int times)
    {
        refreshes = 0;
        for (int index = 0; index < times; ++index) {
            Q_EMIT source.objectWillChange();
        }
        settle();
        return refreshes;
    }
};

} // namespace

TEST_F(ChangeWatcherTest, refreshesOnceForManyAnnouncements)
{
    window.show();
    EXPECT_EQ(announce(3), 1);
}

TEST_F(ChangeWatcherTest, refreshesViewThatWasNeverShown)
{
    EXPECT_EQ(announce(1), 1);
}

TEST_F(ChangeWatcherTest, hiddenViewIsRefreshedWhenShownAgain)
{
    window.show();
    window.hide();
    EXPECT_EQ(announce(3), 0);
    window.show();
    EXPECT_EQ(refreshes, 1);
    EXPECT_EQ(announce(1), 1);
}

TEST_F(ChangeWatcherTest, nothingMissedMeansNoRefreshOnShow)
{
    window.show();
    window.hide();
    refreshes = 0;
    window.show();
    settle();
    EXPECT_EQ(refreshes, 0);
}

} // namespace talmo::test
