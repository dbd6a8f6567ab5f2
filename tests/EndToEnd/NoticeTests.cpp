// What Talmo tells by a notification, because nobody looks at its windows.

#include "EndToEnd/TalmoFixture.h"

#include "Support/Notified.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

const QString withoutTray =
    u"Talmo is running. This desktop has no place for its icon: start Talmo again to open its settings."_s;
const QString otherMicrophone =
    u"“Headset” is not connected. Talmo records from the system's default microphone instead."_s;
/// A panel has ten seconds to start, and a little more as long as the processors are busy.
constexpr testbed::Timeout aPanelsTime = 12s;
constexpr testbed::Timeout longEnough = 25s;

class NoticeEndToEndTest : public TalmoFixture {
protected:
    void store(QJsonObject settings)
    {
        settings.insert(u"linux.languageModelAddress"_s, u"off"_s);
        desktop.storeSettings(settings);
    }
    qsizetype shown(const QString &text) const { return user.count(text); }
    bool shows(const QString &text) { return user.isTold(text, longEnough); }

    Notified user{environment};
};

} // namespace

TEST_F(NoticeEndToEndTest, saysOnceWhereTalmoIsIfNothingShowsItsIcon)
{
    store({});
    startTalmo();
    EXPECT_TRUE(shows(withoutTray));
    EXPECT_EQ(quitTalmo(), 0);
    startTalmo();
    EXPECT_FALSE(testbed::waitUntil([this] { return shown(withoutTray) > 1; }, aPanelsTime));
}

TEST_F(NoticeEndToEndTest, keepsQuietIfIconIsShown)
{
    store({});
    const auto tray = testbed::startTray(environment);
    startTalmo();
    EXPECT_FALSE(testbed::waitUntil([this] { return user.isToldAnything(); }, aPanelsTime));
}

TEST_F(NoticeEndToEndTest, missingMicrophoneIsReplacedByDefaultAndReported)
{
    store({{u"linux.microphone"_s, u"headset"_s},
           {u"linux.microphoneTitle"_s, u"Headset"_s},
           {u"linux.iconMissingTold"_s, true}});
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(shows(otherMicrophone));
}

} // namespace talmo::test
