// Real sounds on a private sound server.

#include "Platform/Linux/Sound/EventSounds.h"

#include "Base/Error.h"
#include "ChildProcess.h"
#include "SoundServer.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

class EventSoundsTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    testbed::SoundServer server{folder.path(), environment};
};

} // namespace

TEST_F(EventSoundsTest, everyCueIsPlayed)
{
    const RecordingLog log;
    testbed::ChildProcess events(u"pactl"_s, {u"subscribe"_s}, environment);
    testbed::sleepFor(std::chrono::milliseconds(300)); // It does not say when it has subscribed.
    EventSounds sounds;
    std::size_t seen = 0;
    for (const auto cue : {SoundCue::Start, SoundCue::Stop, SoundCue::Error}) {
        sounds.play(cue);
        const auto line = events.waitForLine(u"'new' on sink-input"_s, std::chrono::seconds(20), seen);
        EXPECT_TRUE(line.has_value());
        seen = events.lines().size();
    }
    EXPECT_TRUE(log.lines().empty()) << log.lines().front().toStdString();
}

TEST_F(EventSoundsTest, missingServerIsOnlyLogged)
{
    const RecordingLog log;
    server.killServer();
    EventSounds sounds;
    sounds.play(SoundCue::Start);
    EXPECT_TRUE(waitFor([&log] { return !log.lines().empty(); }));
}

} // namespace talmo::test
