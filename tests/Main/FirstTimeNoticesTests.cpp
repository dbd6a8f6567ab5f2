#include "Main/FirstTimeNotices.h"

#include "Support/ManualClock.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FirstTimeNoticesTest : public testing::Test {
protected:
    FirstTimeNoticesTest()
    {
        desktop->statusItem = icon;
        defaults->store(u"linux.welcomeShown"_s, true);
    }
    /// As a start of Talmo would, for as long as a panel may take.
    void start()
    {
        FirstTimeNotices notices(
            {defaults, clock, desktop, [this] { ++welcomes; }, [this](const QString &text) { told.append(text); }});
        notices.show();
        clock->advance(FirstTimeNotices::panelStartTime);
    }

    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<FakeStatusItem> icon = std::make_shared<FakeStatusItem>();
    std::shared_ptr<Desktop> desktop = std::make_shared<Desktop>();
    QStringList told;
    int welcomes = 0;
};

const QString withoutIcon =
    u"Talmo is running. This desktop has no place for its icon: start Talmo again to open its settings."_s;

} // namespace

TEST_F(FirstTimeNoticesTest, welcomesOnce)
{
    defaults->store(u"linux.welcomeShown"_s, false);
    start();
    start();
    EXPECT_EQ(welcomes, 1);
}

TEST_F(FirstTimeNoticesTest, announcesEachLimitOnce)
{
    desktop->limits = {{"slow", "This is slow.", "Wait."}};
    start();
    desktop->limits.append({"blind", "This is dark.", "Feel."});
    start();
    EXPECT_THAT(told, ElementsAre(u"This is slow. Wait."_s, u"This is dark. Feel."_s));
}

TEST_F(FirstTimeNoticesTest, reportsMissingIconOnce)
{
    icon->isInPanel = false;
    start();
    start();
    EXPECT_THAT(told, ElementsAre(withoutIcon));
}

TEST_F(FirstTimeNoticesTest, waitsForLatePanel)
{
    icon->isInPanel = false;
    FirstTimeNotices notices({defaults, clock, desktop, [] {}, [this](const QString &text) { told.append(text); }});
    notices.show();
    clock->advance(FirstTimeNotices::panelStartTime / 2);
    icon->isInPanel = true;
    clock->advance(FirstTimeNotices::panelStartTime);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FirstTimeNoticesTest, staysSilentOnceDestroyed)
{
    icon->isInPanel = false;
    {
        FirstTimeNotices notices({defaults, clock, desktop, [] {}, [this](const QString &text) { told.append(text); }});
        notices.show();
    }
    clock->advance(FirstTimeNotices::panelStartTime);
    EXPECT_THAT(told, IsEmpty());
}

} // namespace talmo::test
