#include "Input/Audio/AudioRecorder.h"

#include "Support/FakeAudioEngine.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

#include <limits>

namespace talmo::test {

using testing::ElementsAre;

namespace {

const std::string tap = "installTap 2048";

class AudioRecorderTest : public testing::Test {
protected:
    /// The message of the error thrown by start().
    QString startError()
    {
        try {
            recorder.start([](const auto &, const auto &) {});
        } catch (const RecorderError &error) {
            return error.localizedDescription();
        }
        return u"no error"_s;
    }

    std::shared_ptr<FakeAudioEngine> engine = std::make_shared<FakeAudioEngine>();
    AudioRecorder recorder{engine};
};

} // namespace

TEST_F(AudioRecorderTest, startsAndStopsInOrder)
{
    int buffers = 0;
    recorder.start([&buffers](const auto &, const auto &) { ++buffers; });
    EXPECT_TRUE(recorder.isRecording());
    engine->capture(silence(engine->format, 10));
    EXPECT_EQ(buffers, 1);
    recorder.stop();
    EXPECT_FALSE(recorder.isRecording());
    engine->capture(silence(engine->format, 10));
    EXPECT_EQ(buffers, 1);
    EXPECT_THAT(engine->calls, ElementsAre("inputFormat", "removeTap", tap, "prepare", "start", "removeTap", "stop"));
}

TEST_F(AudioRecorderTest, secondStartKeepsFirstHandler)
{
    int first = 0;
    int second = 0;
    recorder.start([&first](const auto &, const auto &) { ++first; });
    recorder.start([&second](const auto &, const auto &) { ++second; });
    engine->capture(silence(engine->format, 10));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
    EXPECT_THAT(engine->calls, ElementsAre("inputFormat", "removeTap", tap, "prepare", "start"));
}

TEST_F(AudioRecorderTest, stopWhenIdleDoesNothing)
{
    recorder.stop();
    EXPECT_TRUE(engine->calls.empty());
    recorder.start([](const auto &, const auto &) {});
    recorder.stop();
    engine->calls.clear();
    recorder.stop();
    EXPECT_TRUE(engine->calls.empty());
}

TEST_F(AudioRecorderTest, canRecordAgainAfterAStop)
{
    recorder.start([](const auto &, const auto &) {});
    recorder.stop();
    int buffers = 0;
    recorder.start([&buffers](const auto &, const auto &) { ++buffers; });
    engine->capture(silence(engine->format, 10));
    EXPECT_EQ(buffers, 1);
    EXPECT_TRUE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, isRecordingFromEndOfStartToEndOfStop)
{
    std::vector<bool> seen;
    engine->onStart = [&] { seen.push_back(recorder.isRecording()); };
    engine->onStop = engine->onStart;
    recorder.start([](const auto &, const auto &) {});
    recorder.stop();
    EXPECT_THAT(seen, ElementsAre(false, true));
    EXPECT_FALSE(recorder.isRecording());
}

TEST_F(AudioRecorderTest, acceptsAnyPositiveRateAndOneChannel)
{
    engine->format = {0.5, 1, SampleType::Int16};
    EXPECT_EQ(startError(), u"no error"_s);
}

TEST_F(AudioRecorderTest, failureReportsItsKind)
{
    const auto kind = [this] {
        try {
            recorder.start([](const auto &, const auto &) {});
        } catch (const RecorderError &error) {
            return std::optional(error.which());
        }
        return std::optional<RecorderError::Case>();
    };
    engine->startFailure = std::make_exception_ptr(PlatformException(u"Fault"_s, u"raised"_s));
    EXPECT_EQ(kind(), RecorderError::Case::EngineStartFailed);
    engine->tapFailure = std::make_exception_ptr(Error(u"no tap"_s));
    EXPECT_EQ(kind(), RecorderError::Case::TapInstallationFailed);
    engine->format.sampleRate = 0;
    EXPECT_EQ(kind(), RecorderError::Case::NoInputAvailable);
}

TEST_F(AudioRecorderTest, zeroRateOrChannelsFailsBeforeTouchingTap)
{
    const AudioFormat formats[] = {{0, 1, SampleType::Float32},
                                   {-1, 1, SampleType::Float32},
                                   {std::numeric_limits<double>::quiet_NaN(), 1, SampleType::Float32},
                                   {48000, 0, SampleType::Float32}};
    for (const auto &format : formats) {
        engine->calls.clear();
        engine->format = format;
        EXPECT_EQ(startError(), u"No microphone input is available."_s);
        EXPECT_THAT(engine->calls, ElementsAre("inputFormat"));
        EXPECT_FALSE(recorder.isRecording());
    }
}

TEST_F(AudioRecorderTest, throwingTapReportsItsReason)
{
    engine->tapFailure = std::make_exception_ptr(PlatformException(u"Fault"_s, u"format mismatch"_s));
    EXPECT_EQ(startError(), u"Couldn't set up microphone capture: format mismatch"_s);
    engine->tapFailure = std::make_exception_ptr(PlatformException({}, {}));
    EXPECT_EQ(startError(), u"Couldn't set up microphone capture: Unknown audio engine exception"_s);
    engine->tapFailure = std::make_exception_ptr(Error(u"nothing to tap"_s));
    EXPECT_EQ(startError(), u"Couldn't set up microphone capture: nothing to tap"_s);
    EXPECT_FALSE(recorder.isRecording());
    const auto neverStarted = testing::Not(testing::Contains(testing::AnyOf("prepare", "start")));
    EXPECT_THAT(engine->calls, neverStarted);
}

TEST_F(AudioRecorderTest, failedEngineStartRemovesTapAndCanBeRetried)
{
    engine->startFailure = std::make_exception_ptr(Error(u"busy"_s));
    EXPECT_EQ(startError(), u"Couldn't start audio capture: busy"_s);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_THAT(engine->calls, ElementsAre("inputFormat", "removeTap", tap, "prepare", "start", "removeTap"));
    engine->calls.clear();
    recorder.stop();
    EXPECT_TRUE(engine->calls.empty()) << "nothing is running, so nothing is stopped";
    engine->startFailure = nullptr;
    EXPECT_EQ(startError(), u"no error"_s);
    EXPECT_TRUE(recorder.isRecording());
}

} // namespace talmo::test
