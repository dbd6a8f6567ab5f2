#include "Platform/Linux/Sound/PulseAudioEngine.h"
#include "SoundServer.h"
#include "Support/Printing.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;

class PulsePrerollTest : public testing::Test {
protected:
    /// The number of frames a recording has as it starts.
    quint32 framesAtStart()
    {
        engine.inputFormat();
        engine.removeTap();
        engine.installTap(64, [this](const auto &buffer, const auto &) { frames += buffer->frameLength(); });
        engine.prepare();
        engine.start();
        return frames;
    }
    void end()
    {
        engine.removeTap();
        engine.stop();
    }
    quint32 framesIn(std::chrono::milliseconds time)
    {
        return static_cast<quint32>(engine.inputFormat().sampleRate * static_cast<double>(time.count()) / 1000);
    }
    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    testbed::SoundServer sound{folder.path() + u"/sound"_s, environment};
    PulseAudioEngine engine;
    std::atomic<quint32> frames = 0;
};

} // namespace

TEST_F(PulsePrerollTest, recordingStartsWithKeptAudio)
{
    engine.warmUp();
    testbed::sleepFor(400ms);
    EXPECT_GE(framesAtStart(), framesIn(200ms));
    const quint32 kept = frames;
    for (int look = 0; look < 1000 && frames == kept; ++look) {
        testbed::sleepFor(5ms);
    }
    EXPECT_GT(frames, kept) << "and continues";
    end();
}

TEST_F(PulsePrerollTest, recordingWithoutPressStartsEmpty)
{
    EXPECT_EQ(framesAtStart(), 0U);
    end();
}

TEST_F(PulsePrerollTest, discardsAudioOfTap)
{
    engine.warmUp();
    testbed::sleepFor(400ms);
    engine.discardKept();
    EXPECT_EQ(framesAtStart(), 0U);
    end();
}

TEST_F(PulsePrerollTest, eachPressRestarts)
{
    engine.warmUp();
    testbed::sleepFor(1000ms);
    engine.warmUp();
    EXPECT_LT(framesAtStart(), framesIn(500ms));
    end();
}

TEST_F(PulsePrerollTest, pauseStopsCaptureAndKeepsAudio)
{
    engine.warmUp();
    testbed::sleepFor(400ms);
    engine.pauseKeeping();
    testbed::sleepFor(1500ms);
    const quint32 kept = framesAtStart();
    EXPECT_GE(kept, framesIn(200ms));
    EXPECT_LT(kept, framesIn(1200ms));
    end();
}

TEST_F(PulsePrerollTest, resumeKeepsAudioBeforeAndAfterPause)
{
    engine.warmUp();
    testbed::sleepFor(300ms);
    engine.pauseKeeping();
    engine.resumeKeeping();
    testbed::sleepFor(600ms);
    EXPECT_GE(framesAtStart(), framesIn(500ms));
    end();
}

TEST_F(PulsePrerollTest, doesNotAffectRunningRecording)
{
    framesAtStart();
    engine.warmUp();
    engine.pauseKeeping();
    engine.discardKept();
    engine.coolDown();
    const quint32 then = frames;
    for (int look = 0; look < 1000 && frames < then + framesIn(300ms); ++look) {
        testbed::sleepFor(5ms);
    }
    EXPECT_GE(frames, then + framesIn(300ms));
    end();
}

} // namespace talmo::test
