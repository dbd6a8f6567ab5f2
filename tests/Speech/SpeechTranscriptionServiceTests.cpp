#include "Speech/SpeechTranscriptionService.h"

#include "Input/Audio/AudioRecorder.h"
#include "Speech/TranscriptionError.h"
#include "Support/FakeAudioEngine.h"
#include "Support/Printing.h"
#include "Support/ScriptedSpeechPlatform.h"
#include "Support/TestLoop.h"

#include <QThread>

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString notRecording = u"Not currently recording."_s;

/// Passes everything through unconverted.
class NoConverters final : public AudioConverterFactory {
public:
    std::unique_ptr<AudioConverter> make(const AudioFormat &, const AudioFormat &) const override { return nullptr; }
};

class Request final : public AssetInstallationRequest {
public:
    QFuture<void> result = makeReadyFuture();
    QFuture<void> downloadAndInstall() override { return result; }
};

template <typename Value>
QCoro::Task<void> noteOutcome(QCoro::Task<Value> task, QString *outcome)
{
    try {
        if constexpr (std::is_void_v<Value>) {
            co_await task;
            *outcome = u"done"_s;
        } else if constexpr (std::is_same_v<Value, QString>) {
            *outcome = u"text: "_s + co_await task;
        } else {
            const ModelStatus status = co_await task;
            *outcome = u"supported %1 installed %2"_s.arg(status.supported).arg(status.installed);
        }
    } catch (const Error &error) {
        *outcome = error.localizedDescription();
    }
}

/// Runs on the test's thread; everything else is real.
class SpeechTranscriptionServiceTest : public testing::Test {
protected:
    /// Lets everything still waiting end while what it uses exists.
    void TearDown() override
    {
        platform->endResults();
        service.reset();
        recorder->stop();
        settle();
    }
    template <typename Value>
    QString outcomeOf(QCoro::Task<Value> task)
    {
        QString outcome;
        tasks.push_back(noteOutcome(std::move(task), &outcome));
        settle();
        return outcome;
    }
    QString start(const QString &locale = u"en_US"_s)
    {
        return outcomeOf(service->startTranscription(
            recorder, locale, [this](const QString &text) { updates.push_back(text); },
            [this](const std::exception_ptr &error) { errors.push_back(localizedDescription(error)); }));
    }
    QString stop() { return outcomeOf(service->stopTranscription()); }
    QString cancel() { return outcomeOf(service->cancelTranscription()); }
    void yield(const QString &text, bool isFinal)
    {
        platform->lastAnalyzer.lock()->yield(text, isFinal);
        settle();
    }
    /// One buffer from the microphone.
    void speak() { engine->capture(silence(engine->format, 10)); }

    std::vector<QCoro::Task<void>> tasks;
    std::shared_ptr<ScriptedSpeechPlatform> platform = std::make_shared<ScriptedSpeechPlatform>();
    std::shared_ptr<FakeAudioEngine> engine = std::make_shared<FakeAudioEngine>();
    std::shared_ptr<AudioRecorder> recorder = std::make_shared<AudioRecorder>(engine);
    std::shared_ptr<SerialExecutor> executor = SerialExecutor::onCurrentThread();
    std::shared_ptr<SpeechTranscriptionService> service = std::make_shared<SpeechTranscriptionService>(
        platform, std::make_shared<NoConverters>(), executor, SerialExecutor::onCurrentThread());
    std::vector<QString> updates;
    std::vector<QString> errors;
};

} // namespace

TEST_F(SpeechTranscriptionServiceTest, modelStatusQueriesInOrder)
{
    EXPECT_EQ(outcomeOf(service->modelStatus(u"en-GB"_s)), u"supported 1 installed 1"_s);
    EXPECT_THAT(platform->calls, ElementsAre("supportedLocale en-GB", "makeTranscriber en_US preset", "assetStatus"));
    for (const auto status : {AssetStatus::Unsupported, AssetStatus::Supported, AssetStatus::Downloading}) {
        platform->status = status;
        EXPECT_EQ(outcomeOf(service->modelStatus(u"en-GB"_s)), u"supported 1 installed 0"_s);
    }
}

TEST_F(SpeechTranscriptionServiceTest, modelStatusIsBothFalseWhenUnavailableOrUnsupported)
{
    platform->available = false;
    EXPECT_EQ(outcomeOf(service->modelStatus(u"en"_s)), u"supported 0 installed 0"_s);
    EXPECT_THAT(platform->calls, IsEmpty());
    platform->available = true;
    platform->supported.reset();
    EXPECT_EQ(outcomeOf(service->modelStatus(u"xx"_s)), u"supported 0 installed 0"_s);
}

TEST_F(SpeechTranscriptionServiceTest, installModelDownloadsMissingAssets)
{
    auto request = std::make_shared<Request>();
    auto gate = Completion<void>::make();
    request->result = gate->future();
    platform->onRequest = [&] { return makeReadyFuture(std::shared_ptr<AssetInstallationRequest>(request)); };
    platform->available = false; // Not consulted.
    QString outcome;
    tasks.push_back(noteOutcome(service->installModel(u"en"_s), &outcome));
    settle();
    EXPECT_EQ(outcome, QString());
    gate->finish();
    settle();
    EXPECT_EQ(outcome, u"done"_s);
    EXPECT_THAT(platform->calls,
                ElementsAre("supportedLocale en", "makeTranscriber en_US preset", "assetInstallationRequest"));
}

TEST_F(SpeechTranscriptionServiceTest, installModelWithoutARequestSucceedsWithoutDownloading)
{
    platform->onRequest = [] { return makeReadyFuture(std::shared_ptr<AssetInstallationRequest>()); };
    EXPECT_EQ(outcomeOf(service->installModel(u"en"_s)), u"done"_s);
}

TEST_F(SpeechTranscriptionServiceTest, installModelPropagatesFailures)
{
    platform->onRequest = [] {
        return makeFailedFuture<std::shared_ptr<AssetInstallationRequest>>(
            std::make_exception_ptr(Error(u"no request"_s)));
    };
    EXPECT_EQ(outcomeOf(service->installModel(u"en"_s)), u"no request"_s);
    auto request = std::make_shared<Request>();
    request->result = makeFailedFuture<void>(std::make_exception_ptr(Error(u"offline"_s)));
    platform->onRequest = [&] { return makeReadyFuture(std::shared_ptr<AssetInstallationRequest>(request)); };
    EXPECT_EQ(outcomeOf(service->installModel(u"en"_s)), u"offline"_s);
    platform->supported.reset();
    EXPECT_EQ(outcomeOf(service->installModel(u"xx"_s)),
              TranscriptionError(TranscriptionError::Case::LocaleNotSupported).localizedDescription());
}

TEST_F(SpeechTranscriptionServiceTest, startRunsRecorderBeforeAnalyzer)
{
    platform->finalResult = u"hello"_s;
    EXPECT_EQ(start(u"en-GB"_s), u"done"_s);
    EXPECT_THAT(platform->calls, ElementsAre("supportedLocale en-GB", "makeTranscriber en_US volatile", "assetStatus",
                                             "bestAvailableAudioFormat", "makeAnalyzer", "analyzer.start"));
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(SpeechTranscriptionServiceTest, startFailsWithExpectedErrors)
{
    using Case = TranscriptionError::Case;
    const auto text = [](Case which) { return TranscriptionError(which).localizedDescription(); };
    platform->format.reset();
    EXPECT_EQ(start(), text(Case::NoCompatibleAudioFormat));
    platform->status = AssetStatus::Supported;
    EXPECT_EQ(start(), text(Case::ModelAssetsNotInstalled));
    platform->supported.reset();
    EXPECT_EQ(start(), text(Case::LocaleNotSupported));
    platform->available = false;
    EXPECT_EQ(start(), text(Case::OnDeviceUnavailable));
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_EQ(stop(), notRecording);
}

TEST_F(SpeechTranscriptionServiceTest, stopWithoutRecordingFails)
{
    EXPECT_EQ(stop(), notRecording);
    start();
    EXPECT_EQ(stop(), u"text: "_s);
    EXPECT_EQ(stop(), notRecording);
    recorder->stop();
    start();
    EXPECT_EQ(cancel(), u"done"_s);
    EXPECT_EQ(stop(), notRecording);
}

TEST_F(SpeechTranscriptionServiceTest, eachUpdateIsTheWholeTextSoFar)
{
    start();
    yield(u"hello"_s, false);
    yield(u"hello world"_s, true);
    yield(u"again"_s, false);
    yield(u""_s, false);
    EXPECT_THAT(updates, ElementsAre(u"hello"_s, u"hello world"_s, u"hello world again"_s, u"hello world"_s));
    platform->finalResult = u"again and again"_s;
    EXPECT_EQ(stop(), u"text: hello world again and again"_s);
}

TEST_F(SpeechTranscriptionServiceTest, emptyTextIsNotPublished)
{
    start();
    yield(u""_s, false);
    EXPECT_THAT(updates, IsEmpty());
    EXPECT_EQ(stop(), u"text: "_s);
}

TEST_F(SpeechTranscriptionServiceTest, blankResultsArePublishedAndTrimmedAtStop)
{
    start();
    yield(u" "_s, true);
    EXPECT_THAT(updates, ElementsAre(u" "_s));
    EXPECT_EQ(stop(), u"text: "_s);
}

TEST_F(SpeechTranscriptionServiceTest, buffersReachAnalyzerUntilStop)
{
    start();
    speak();
    speak();
    settle();
    EXPECT_EQ(*platform->receivedBuffers, 2);
    stop();
    speak();
    settle();
    EXPECT_EQ(*platform->receivedBuffers, 2);
}

TEST_F(SpeechTranscriptionServiceTest, textDoesNotLeakIntoNextRecording)
{
    platform->finalResult = u"first"_s;
    start();
    EXPECT_EQ(stop(), u"text: first"_s);
    recorder->stop();
    platform->finalResult = QString();
    start();
    EXPECT_EQ(stop(), u"text: "_s);
}

TEST_F(SpeechTranscriptionServiceTest, recorderErrorIsPropagatedAndStopStillFinalises)
{
    engine->format.channelCount = 0;
    EXPECT_EQ(start(), u"No microphone input is available."_s);
    platform->calls.clear();
    EXPECT_EQ(stop(), u"text: "_s);
    EXPECT_THAT(platform->calls, ElementsAre("finalize"));
    EXPECT_EQ(stop(), notRecording);
    engine->format.channelCount = 1;
    EXPECT_EQ(start(), u"done"_s);
}

TEST_F(SpeechTranscriptionServiceTest, cancelClearsHalfOpenRecording)
{
    engine->startFailure = std::make_exception_ptr(Error(u"busy"_s));
    EXPECT_EQ(start(), u"Couldn't start audio capture: busy"_s);
    EXPECT_EQ(cancel(), u"done"_s);
    EXPECT_EQ(stop(), notRecording);
    EXPECT_EQ(platform->livingAnalyzers, 0);
}

TEST_F(SpeechTranscriptionServiceTest, failedFinalisationThrowsAndKeepsStateForCancel)
{
    platform->onFinalize = [] { return makeFailedFuture<void>(std::make_exception_ptr(Error(u"finalise"_s))); };
    start();
    EXPECT_EQ(stop(), u"finalise"_s);
    EXPECT_EQ(stop(), u"finalise"_s);
    EXPECT_EQ(cancel(), u"done"_s);
    EXPECT_EQ(stop(), notRecording);
}

TEST_F(SpeechTranscriptionServiceTest, stopIgnoresAnalyzerTaskFailure)
{
    platform->startFailure = std::make_exception_ptr(Error(u"analyzer"_s));
    platform->finalResult = u"kept"_s;
    start();
    EXPECT_EQ(stop(), u"text: kept"_s);
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(SpeechTranscriptionServiceTest, resultFailureReportsOnceAndStopKeepsText)
{
    start();
    yield(u"so far"_s, true);
    platform->lastTranscriber.lock()->stream.second.finish(std::make_exception_ptr(Error(u"decoder"_s)));
    settle();
    EXPECT_THAT(errors, ElementsAre(u"decoder"_s));
    EXPECT_EQ(stop(), u"text: so far"_s);
    EXPECT_EQ(errors.size(), 1U);
}

TEST_F(SpeechTranscriptionServiceTest, cancelOvertakesHangingStop)
{
    auto hang = Completion<void>::make();
    platform->onFinalize = [hang] { return hang->future(); };
    start();
    QString stopOutcome;
    tasks.push_back(noteOutcome(service->stopTranscription(), &stopOutcome));
    settle();
    EXPECT_EQ(stopOutcome, QString());
    EXPECT_EQ(cancel(), u"done"_s);
    recorder->stop();
    platform->onFinalize = nullptr;
    platform->finalResult = u"next"_s;
    EXPECT_EQ(start(), u"done"_s);
    EXPECT_EQ(stop(), u"text: next"_s);
    hang->finish();
    settle();
    EXPECT_NE(stopOutcome, QString());
}

TEST_F(SpeechTranscriptionServiceTest, resultsAfterCancelAreDropped)
{
    start();
    const auto transcriber = platform->lastTranscriber.lock();
    cancel();
    transcriber->stream.second.yield({u"late"_s, true});
    settle();
    EXPECT_THAT(updates, IsEmpty());
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(SpeechTranscriptionServiceTest, secondStartKeepsFirstHandlerAndFreesReplacedAnalyzer)
{
    start();
    const auto first = platform->lastAnalyzer;
    EXPECT_EQ(start(), u"done"_s);
    EXPECT_EQ(platform->livingAnalyzers, 2);
    speak(); // Goes to the first analyzer: the recorder keeps its handler.
    settle();
    EXPECT_EQ(*platform->receivedBuffers, 1);
    recorder->stop(); // Drops the first handler and with it the first stream's last continuation.
    settle();
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(platform->livingAnalyzers, 1);
    EXPECT_EQ(stop(), u"text: "_s);
    EXPECT_EQ(platform->livingAnalyzers, 0);
}

TEST_F(SpeechTranscriptionServiceTest, canBeDestroyedWhileRecording)
{
    start();
    yield(u"hello"_s, false);
    service.reset();
    recorder->stop();
    settle();
    EXPECT_THAT(updates, ElementsAre(u"hello"_s));
}

TEST_F(SpeechTranscriptionServiceTest, passesGarbageLocaleToPlatformUnchanged)
{
    platform->supported.reset();
    const QString garbage = QString(QChar(0xD800)) + u"\n../../x"_s;
    EXPECT_EQ(outcomeOf(service->modelStatus(garbage)), u"supported 0 installed 0"_s);
}

TEST(SpeechTranscriptionServiceThreads, runsOnOwnThreadAndCallsBackOnMainThread)
{
    const auto platform = std::make_shared<ScriptedSpeechPlatform>();
    platform->finalResult = u"threaded"_s;
    const auto engine = std::make_shared<FakeAudioEngine>();
    const auto recorder = std::make_shared<AudioRecorder>(engine);
    const auto service = std::make_shared<SpeechTranscriptionService>(platform, std::make_shared<NoConverters>(),
                                                                      SerialExecutor::onNewThread(u"speech"_s),
                                                                      SerialExecutor::onCurrentThread());
    QThread *updatedOn = nullptr;
    QString outcome;
    const auto task =
        noteOutcome(service->startTranscription(
                        recorder, u"en"_s, [&updatedOn](const QString &) { updatedOn = QThread::currentThread(); },
                        [](const std::exception_ptr &) {}),
                    &outcome);
    ASSERT_TRUE(waitFor([&outcome] { return outcome == u"done"_s; }));
    const auto stopTask = noteOutcome(service->stopTranscription(), &outcome);
    ASSERT_TRUE(waitFor([&outcome] { return outcome == u"text: threaded"_s; }));
    EXPECT_EQ(updatedOn, QThread::currentThread());
}

} // namespace talmo::test
