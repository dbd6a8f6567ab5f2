// The microphone that the user has chosen, on a real sound server with several of them.

#include "Platform/Linux/Sound/PulseAudioEngine.h"
#include "SoundServer.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <atomic>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using Finding = MicrophoneReport::Finding;

class MicrophoneChoiceTest : public testing::Test {
protected:
    void start()
    {
        engine.inputFormat();
        engine.installTap(2048, [this](const auto &buffer, const AudioTime &) { frames += buffer->frameLength(); });
        engine.start();
    }
    void stop()
    {
        engine.removeTap();
        engine.stop();
    }
    bool captures(quint32 count)
    {
        const quint32 wanted = frames + count;
        return testing::Test::HasFatalFailure() || testbed::pollUntil([&] { return frames >= wanted; }, 10s);
    }
    /// Records a little and reports.
    MicrophoneReport reportOfARecording(quint32 atLeast = 4000)
    {
        start();
        EXPECT_TRUE(captures(atLeast));
        stop();
        return engine.report();
    }

    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    testbed::SoundServer sound{folder.path() + u"/sound"_s, environment};
    PulseAudioEngine engine;
    std::atomic<quint32> frames = 0;
};

} // namespace

TEST_F(MicrophoneChoiceTest, recordsFromTheChosenOne)
{
    sound.addNamedMicrophone(u"headset"_s, u"Jabra Evolve"_s);
    engine.chooseMicrophone(u"headset"_s);
    const auto report = reportOfARecording();
    EXPECT_EQ(engine.sourceName(), u"headset"_s);
    EXPECT_EQ(report.microphone, u"Jabra Evolve"_s);
    engine.chooseMicrophone(QString());
    reportOfARecording();
    EXPECT_EQ(engine.sourceName(), u"mic"_s);
}

TEST_F(MicrophoneChoiceTest, defaultStandsInWhileTheChosenOneIsMissing)
{
    std::vector<bool> told;
    engine.setOnChosenMissing([&told](bool isMissing) { told.push_back(isMissing); });
    engine.chooseMicrophone(u"headset"_s);
    reportOfARecording();
    EXPECT_EQ(engine.sourceName(), u"mic"_s);
    reportOfARecording();
    EXPECT_THAT(told, ElementsAre(true)) << "once, not at every recording";
    sound.addNamedMicrophone(u"headset"_s, u"Jabra Evolve"_s);
    reportOfARecording();
    EXPECT_EQ(engine.sourceName(), u"headset"_s);
    EXPECT_THAT(told, ElementsAre(true, false));
}

TEST_F(MicrophoneChoiceTest, mixerCanMoveTheRecording)
{
    sound.addNamedMicrophone(u"headset"_s, u"Jabra Evolve"_s);
    start();
    ASSERT_TRUE(captures(4000));
    ASSERT_TRUE(sound.moveRecording(u"headset"_s));
    sound.removeNamedMicrophone(u"none"_s); // A round trip, after which the stream has been moved.
    EXPECT_TRUE(captures(40000));
    stop();
    EXPECT_NE(engine.report().finding, Finding::Unplugged);
}

TEST_F(MicrophoneChoiceTest, unpluggingEndsTheRecordingAndIsReported)
{
    std::atomic<int> told = 0;
    engine.setOnUnplugged([&told] { ++told; });
    sound.addNamedMicrophone(u"headset"_s, u"Jabra Evolve"_s);
    engine.chooseMicrophone(u"headset"_s);
    start();
    ASSERT_TRUE(captures(4000));
    sound.removeNamedMicrophone(u"headset"_s);
    EXPECT_TRUE(testbed::pollUntil([&told] { return told > 0; }, 5s));
    stop();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(engine.report().finding, Finding::Unplugged);
    EXPECT_TRUE(engine.report().message().contains(u"“Jabra Evolve”"_s));
    engine.setOnUnplugged({});
}

TEST_F(MicrophoneChoiceTest, silenceOfAMutedMicrophoneIsReported)
{
    sound.addNamedMicrophone(u"silent"_s, u"Broken"_s, true);
    engine.chooseMicrophone(u"silent"_s);
    EXPECT_EQ(reportOfARecording().finding, Finding::Fine); // Too short to tell.
    const auto report = reportOfARecording(30'000);
    EXPECT_EQ(report.finding, Finding::OnlySilence);
    EXPECT_EQ(report.message(), u"The microphone “Broken” gives only silence. Is it muted?"_s);
}

TEST_F(MicrophoneChoiceTest, missingServerIsReported)
{
    sound.killServer();
    EXPECT_EQ(engine.inputFormat().channelCount, 0U);
    EXPECT_EQ(engine.report().finding, Finding::NoServer);
}

} // namespace talmo::test
