// The states between idle and transcribing, late results, and failures of each step.

#include "Speech/SpeechTranscriptionService.h"

#include "Input/Audio/AudioRecorder.h"
#include "Speech/TranscriptionError.h"
#include "Support/FakeAudioEngine.h"
#include "Support/Printing.h"
#include "Support/ScriptedSpeechPlatform.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

const QString notRecording = u"Not currently recording."_s;

/// Creates no converter; records the formats requested.
class WatchedConverters final : public AudioConverterFactory {
public:
    mutable std::vector<std::pair<AudioFormat, AudioFormat>> asked;
    std::unique_ptr<AudioConverter> make(const AudioFormat &from, const AudioFormat &to) const override
    {
        asked.emplace_back(from, to);
        return nullptr;
    }
};

template <typename Value>
QCoro::Task<void> noteOutcome(QCoro::Task<Value> task, std::shared_ptr<QString> outcome)
{
    try {
        if constexpr (std::is_void_v<Value>) {
            co_await task;
            *outcome = u"done"_s;
        } else {
            *outcome = u"text: "_s + co_await task;
        }
    } catch (const Error &error) {
        *outcome = error.localizedDescription();
    }
}

class TranscriptionStatesTest : public testing::Test {
protected:
    /// Lets everything still waiting end while what it uses exists.
    void TearDown() override
    {
        platform->endResults();
        service.reset();
        recorder->stop();
        settle();
    }
    /// The task's outcome; empty while it is pending.
    template <typename Value>
    std::shared_ptr<QString> run(QCoro::Task<Value> task)
    {
        auto outcome = std::make_shared<QString>();
        tasks.push_back(noteOutcome(std::move(task), outcome));
        settle();
        return outcome;
    }
    QString start()
    {
        return *run(service->startTranscription(
            recorder, u"en_US"_s,
            [this](const QString &text) {
                updates.push_back(text);
                if (onUpdate) {
                    onUpdate();
                }
            },
            [this](const std::exception_ptr &error) {
                errors.push_back(localizedDescription(error));
                if (onError) {
                    onError();
                }
            }));
    }
    std::shared_ptr<QString> stop() { return run(service->stopTranscription()); }
    std::shared_ptr<QString> cancel() { return run(service->cancelTranscription()); }
    void speak()
    {
        engine->capture(silence(engine->format, 10));
        settle();
    }
    std::pair<ScriptedSpeechPlatform::Results, ScriptedSpeechPlatform::Results::Continuation> results()
    {
        return platform->lastTranscriber.lock()->stream;
    }

    std::vector<QCoro::Task<void>> tasks;
    std::shared_ptr<ScriptedSpeechPlatform> platform = std::make_shared<ScriptedSpeechPlatform>();
    std::shared_ptr<FakeAudioEngine> engine = std::make_shared<FakeAudioEngine>();
    std::shared_ptr<AudioRecorder> recorder = std::make_shared<AudioRecorder>(engine);
    std::shared_ptr<WatchedConverters> converters = std::make_shared<WatchedConverters>();
    std::shared_ptr<SpeechTranscriptionService> service = std::make_shared<SpeechTranscriptionService>(
        platform, converters, SerialExecutor::onCurrentThread(), SerialExecutor::onCurrentThread());
    std::function<void()> onUpdate;
    std::function<void()> onError;
    std::vector<QString> updates;
    std::vector<QString> errors;
};

} // namespace

TEST_F(TranscriptionStatesTest, failingRecorderStartsNoAnalyzer)
{
    engine->startFailure = std::make_exception_ptr(Error(u"busy"_s));
    EXPECT_EQ(start(), u"Couldn't start audio capture: busy"_s);
    EXPECT_THAT(platform->calls, Contains("makeAnalyzer"));
    EXPECT_THAT(platform->calls, Not(Contains("analyzer.start")));
    results().second.yield({u"unread"_s, true});
    settle();
    EXPECT_THAT(updates, IsEmpty());
    EXPECT_EQ(platform->livingAnalyzers, 1);
}

TEST_F(TranscriptionStatesTest, startReplacesHalfOpenRecording)
{
    engine->startFailure = std::make_exception_ptr(Error(u"busy"_s));
    start();
    engine->startFailure = nullptr;
    EXPECT_EQ(start(), u"done"_s);
    EXPECT_EQ(platform->livingAnalyzers, 1);
    platform->finalResult = u"second"_s;
    EXPECT_EQ(*stop(), u"text: second"_s);
    EXPECT_EQ(platform->livingAnalyzers, 0);
}

TEST_F(TranscriptionStatesTest, cancelOfHalfOpenRecordingReachesAnalyzer)
{
    engine->startFailure = std::make_exception_ptr(Error(u"busy"_s));
    start();
    platform->calls.clear();
    EXPECT_EQ(*cancel(), u"done"_s);
    EXPECT_THAT(platform->calls, ElementsAre("cancelAndFinishNow"));
    platform->calls.clear();
    EXPECT_EQ(*cancel(), u"done"_s);
    EXPECT_THAT(platform->calls, IsEmpty()) << "nothing is left to cancel";
}

TEST_F(TranscriptionStatesTest, cancelWhenIdleDoesNothing)
{
    EXPECT_EQ(*cancel(), u"done"_s);
    EXPECT_THAT(platform->calls, IsEmpty());
    EXPECT_EQ(*stop(), notRecording);
}

TEST_F(TranscriptionStatesTest, failedRecorderStartClearsPreviousText)
{
    platform->finalResult = u"first"_s;
    start();
    EXPECT_EQ(*stop(), u"text: first"_s);
    recorder->stop();
    platform->finalResult = QString();
    engine->startFailure = std::make_exception_ptr(Error(u"busy"_s));
    start();
    EXPECT_EQ(*stop(), u"text: "_s);
}

TEST_F(TranscriptionStatesTest, stopEndsInputBeforeFinalisingAnalyzer)
{
    start();
    speak();
    platform->onFinalize = [this] {
        speak();
        EXPECT_EQ(*platform->receivedBuffers, 1);
        results().second.finish();
        return makeReadyFuture();
    };
    EXPECT_EQ(*stop(), u"text: "_s);
    EXPECT_EQ(*platform->receivedBuffers, 1);
}

TEST_F(TranscriptionStatesTest, stopWaitsForAnalyzerTask)
{
    const auto running = Completion<void>::make();
    platform->onStart = [running] { return running->future(); };
    start();
    const auto outcome = stop();
    EXPECT_EQ(*outcome, QString());
    running->finish();
    settle();
    EXPECT_EQ(*outcome, u"text: "_s);
}

TEST_F(TranscriptionStatesTest, stopWaitsForLastResults)
{
    start();
    platform->onFinalize = [] { return makeReadyFuture(); };
    const auto outcome = stop();
    EXPECT_EQ(*outcome, QString());
    results().second.yield({u" late but in time \n"_s, true});
    settle();
    EXPECT_EQ(*outcome, QString());
    EXPECT_THAT(updates, ElementsAre(u" late but in time \n"_s));
    results().second.finish();
    settle();
    EXPECT_EQ(*outcome, u"text: late but in time"_s);
}

TEST_F(TranscriptionStatesTest, failedFinalisationKeepsRecordingForCancel)
{
    start();
    results().second.yield({u"so far"_s, true});
    settle();
    platform->onFinalize = [] { return makeFailedFuture<void>(std::make_exception_ptr(Error(u"finalise"_s))); };
    EXPECT_EQ(*stop(), u"finalise"_s);
    EXPECT_EQ(platform->livingAnalyzers, 1);
    speak();
    EXPECT_EQ(*platform->receivedBuffers, 0) << "its input was ended";
    platform->onFinalize = nullptr;
    EXPECT_EQ(*stop(), u"text: so far"_s) << "a second stop may succeed";
    EXPECT_EQ(platform->livingAnalyzers, 0);
}

TEST_F(TranscriptionStatesTest, cancelEndsInputAndStopsBothTasks)
{
    start();
    EXPECT_FALSE(platform->lastStop.stop_requested());
    const auto gate = Completion<void>::make();
    platform->onCancel = [&] {
        EXPECT_TRUE(platform->lastStop.stop_requested());
        speak();
        EXPECT_EQ(*platform->receivedBuffers, 0);
        return gate->future();
    };
    const auto outcome = cancel();
    EXPECT_EQ(*outcome, QString()) << "it waits for the analyzer";
    results().second.yield({u"late"_s, true});
    settle();
    EXPECT_THAT(updates, IsEmpty());
    gate->finish();
    settle();
    EXPECT_EQ(*outcome, u"done"_s);
    EXPECT_EQ(platform->livingAnalyzers, 0);
}

TEST_F(TranscriptionStatesTest, cancelClearsStateEvenIfAnalyzerFails)
{
    start();
    platform->onCancel = [] { return makeFailedFuture<void>(std::make_exception_ptr(Error(u"stuck"_s))); };
    EXPECT_EQ(*cancel(), u"done"_s);
    EXPECT_EQ(platform->livingAnalyzers, 0);
    EXPECT_EQ(*stop(), notRecording);
}

TEST_F(TranscriptionStatesTest, resultFailureAfterCancelIsNotReported)
{
    start();
    const auto gate = Completion<void>::make();
    platform->onCancel = [&] { return gate->future(); };
    cancel();
    results().second.finish(std::make_exception_ptr(Error(u"decoder"_s)));
    settle();
    EXPECT_THAT(errors, IsEmpty());
    gate->finish();
    settle();
}

TEST_F(TranscriptionStatesTest, successfulResultsReportNoError)
{
    start();
    results().second.finish();
    settle();
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(*stop(), u"text: "_s);
}

TEST_F(TranscriptionStatesTest, nextResultWaitsForUpdateHandler)
{
    start();
    bool isUpdating = false;
    onUpdate = [&] {
        EXPECT_FALSE(isUpdating) << "the next update was nested in this one";
        isUpdating = true;
        settle(); // Runs everything that is ready.
        isUpdating = false;
    };
    const auto continuation = results().second;
    continuation.yield({u"a"_s, false});
    continuation.yield({u"a b"_s, false});
    continuation.yield({u"a b c"_s, true});
    settle();
    EXPECT_THAT(updates, ElementsAre(u"a"_s, u"a b"_s, u"a b c"_s));
}

TEST_F(TranscriptionStatesTest, convertsBuffersToAnalyzerFormat)
{
    start();
    speak();
    speak();
    const std::pair formats(engine->format, *platform->format);
    EXPECT_THAT(converters->asked, ElementsAre(formats, formats)) << "no converter yet, so each buffer tries again";
    EXPECT_EQ(*platform->receivedBuffers, 2);
}

TEST_F(TranscriptionStatesTest, keepsAudioCapturedDuringRecorderStart)
{
    engine->onStart = [this] { engine->capture(silence(engine->format, 10)); };
    EXPECT_EQ(start(), u"done"_s);
    ASSERT_EQ(converters->asked.size(), 1U);
    EXPECT_EQ(converters->asked.front().second, *platform->format);
    EXPECT_EQ(*platform->receivedBuffers, 1);
}

TEST_F(TranscriptionStatesTest, stopWaitsForResultErrorReport)
{
    start();
    auto outcome = std::make_shared<QString>();
    bool wasReported = false;
    onError = [&] {
        settle(); // Runs everything that is ready.
        EXPECT_EQ(*outcome, QString());
        wasReported = true;
    };
    platform->resultsFailure = std::make_exception_ptr(Error(u"decoder"_s));
    tasks.push_back(noteOutcome(service->stopTranscription(), outcome));
    settle();
    EXPECT_TRUE(wasReported);
    EXPECT_EQ(*outcome, u"text: "_s);
}

TEST_F(TranscriptionStatesTest, stoppedRecordingReleasesAnalyzerAndTranscriber)
{
    start();
    stop();
    EXPECT_TRUE(platform->lastAnalyzer.expired());
    EXPECT_TRUE(platform->lastTranscriber.expired());
}

TEST_F(TranscriptionStatesTest, destructionFreesAnalyzer)
{
    start();
    const auto analyzer = platform->lastAnalyzer;
    recorder->stop();
    service.reset();
    results().second.finish();
    settle();
    EXPECT_TRUE(analyzer.expired());
    EXPECT_THAT(errors, IsEmpty());
}

} // namespace talmo::test
