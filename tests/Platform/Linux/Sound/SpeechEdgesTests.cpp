// What is said as the key goes down, before it counts as held, and as it comes up again: the real path from the key to
// the recorder's tap, in real time, with a microphone that hears a signal whose every sample can be told.

#include "App/PressPreparation.h"
#include "Input/Audio/AudioRecorder.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "MarkerSignal.h"
#include "Platform/Linux/Sound/PulsePreroll.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "SoundServer.h"
#include "Support/FakeEventMonitor.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using testbed::MarkerSignal;

/// For opening the stream: ten milliseconds, but nearly ninety where ten programs fight for two processors. Without
/// what is kept, the first 150 would be lost.
constexpr auto toleranceAtPress = 120ms;
/// A server that is starved reports late what is underway.
constexpr auto toleranceAtRelease = 10ms;

constexpr qint64 framesIn(std::chrono::milliseconds time)
{
    return time.count() * MarkerSignal::framesPerSecond / 1000;
}

class SpeechEdgesTest : public testing::Test {
protected:
    SpeechEdgesTest()
    {
        gestures->setOnHotkeyDown([this] {
            speech->post([this] { recorder.start([this](const auto &buffer, const auto &) { note(*buffer); }); });
        });
        gestures->setOnHotkeyUp([this] { recorder.stop(); });
        preparation.start();
        gestures->start();
    }
    ~SpeechEdgesTest() override
    {
        clock->cancelAll();
        settle();
    }

    void note(const AudioBuffer &buffer)
    {
        const auto channels = buffer.format().channelCount;
        const auto *samples = reinterpret_cast<const float *>(buffer.data()); // NOLINT: the format is Float32.
        for (quint32 frame = 0; frame < buffer.frameLength(); ++frame) {
            if (const auto mark = MarkerSignal::frameOf(samples[std::size_t(frame) * channels])) {
                heard.push_back(*mark);
            }
        }
    }

    /// Presses for so long, then releases; the edges of what the recorder has to have heard.
    std::pair<qint64, qint64> hold(std::chrono::milliseconds time)
    {
        const qint64 pressed = marker.frameNow();
        keys->press();
        testbed::sleepFor(time);
        const qint64 released = marker.frameNow();
        keys->release();
        return {pressed, released};
    }

    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    testbed::SoundServer sound{folder.path() + u"/sound"_s, environment};
    MarkerSignal marker;
    std::vector<qint64> heard; ///< By the recorder, in order. Written by one thread at a time.
    std::shared_ptr<TimerFdClock> clock = std::make_shared<TimerFdClock>();
    std::shared_ptr<PulseAudioEngine> engine = std::make_shared<PulseAudioEngine>();
    AudioRecorder recorder{engine};
    std::shared_ptr<SerialExecutor> speech = SerialExecutor::onNewThread(u"speech"_s);
    std::shared_ptr<PulsePreroll> preroll = std::make_shared<PulsePreroll>(engine, speech);
    std::shared_ptr<FakeEventMonitor> keys = std::make_shared<FakeEventMonitor>();
    std::shared_ptr<GlobalHotkeyManager> manager = std::make_shared<GlobalHotkeyManager>(
        keys, std::make_shared<FakeInputTrust>(), clock, SerialExecutor::onCurrentThread());
    std::shared_ptr<DeferringHotkeyService> gestures = std::make_shared<DeferringHotkeyService>(
        DeferringHotkeyService::Parts{manager, preroll, std::make_shared<InterruptibleCleanupService>(nullptr),
                                      std::make_shared<DictationNotice>(), clock});
    PressPreparation preparation{PressPreparation::Parts{keys, gestures, preroll, clock, [] {}}};
};

} // namespace

TEST_F(SpeechEdgesTest, recordsFromPressToReleaseWithoutGap)
{
    const auto [pressed, released] = hold(600ms);
    ASSERT_FALSE(marker.hasGaps()) << "the machine is too slow for this test";
    ASSERT_FALSE(heard.empty());
    RecordProperty("lostAtStart", static_cast<int>(heard.front() - pressed));
    RecordProperty("beyondRelease", static_cast<int>(heard.back() - released));
    EXPECT_LE(heard.front(), pressed + framesIn(toleranceAtPress)) << "what was said before the key counted as held";
    EXPECT_GE(heard.back(), released - framesIn(toleranceAtRelease)) << "what was said last";
    EXPECT_EQ(heard.back() - heard.front() + 1, static_cast<qint64>(heard.size())) << "and all of it in between";
}

TEST_F(SpeechEdgesTest, firstDictationIsCompleteThoughNothingIsConnected)
{
    for (int dictation = 0; dictation < 2; ++dictation) {
        heard.clear();
        const auto [pressed, released] = hold(300ms);
        ASSERT_FALSE(heard.empty()) << dictation;
        EXPECT_LE(heard.front(), pressed + framesIn(toleranceAtPress)) << dictation;
        EXPECT_GE(heard.back(), released - framesIn(toleranceAtRelease)) << dictation;
        testbed::sleepFor(400ms); // So that the next press is not the second of a double tap.
    }
}

TEST_F(SpeechEdgesTest, speechOfTapIsNeverHeard)
{
    hold(60ms);
    testbed::sleepFor(400ms);
    EXPECT_TRUE(heard.empty());
    const auto [pressed, released] = hold(400ms);
    ASSERT_FALSE(heard.empty());
    EXPECT_GE(heard.front(), pressed - framesIn(toleranceAtRelease)) << "nothing of the tap is left";
    EXPECT_LE(heard.front(), pressed + framesIn(toleranceAtPress));
    EXPECT_GE(heard.back(), released - framesIn(toleranceAtRelease));
}

} // namespace talmo::test
