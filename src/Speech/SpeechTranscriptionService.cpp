#include "Speech/SpeechTranscriptionService.h"

#include "Base/Text.h"
#include "Speech/FormatConversion.h"
#include "Speech/TranscriptionError.h"

#include <utility>

namespace talmo {

using InputStream = AsyncStream<AnalyzerInput>;

/// The state and its operations; every function but the constructor runs on the executor.
class SpeechTranscriptionService::Actor : public std::enable_shared_from_this<SpeechTranscriptionService::Actor> {
public:
    using Self = std::shared_ptr<Actor>;

    Actor(std::shared_ptr<SpeechPlatform> thePlatform, std::shared_ptr<const AudioConverterFactory> theConverters,
          std::shared_ptr<SerialExecutor> theExecutor, std::shared_ptr<SerialExecutor> theMainExecutor)
        : executor(std::move(theExecutor)),
          mainExecutor(std::move(theMainExecutor)),
          m_platform(std::move(thePlatform)),
          m_converters(std::move(theConverters))
    {
    }

    static QCoro::Task<ModelStatus> modelStatus(Self self, QString locale);
    static QCoro::Task<void> installModel(Self self, QString locale);
    static QCoro::Task<void> start(Self self, std::shared_ptr<RecorderService> recorder, QString locale,
                                   UpdateHandler onUpdate, ErrorHandler onError);
    static QCoro::Task<QString> stop(Self self);
    static QCoro::Task<void> cancel(Self self);

    const std::shared_ptr<SerialExecutor> executor;
    const std::shared_ptr<SerialExecutor> mainExecutor;

private:
    void open(std::shared_ptr<RecorderService> recorder, std::shared_ptr<SpeechTranscriber> transcriber,
              const AudioFormat &targetFormat, UpdateHandler onUpdate, ErrorHandler onError);
    void clear();
    static QCoro::Task<void> runAnalyzer(std::shared_ptr<SpeechAnalyzer> analyzer, InputStream input,
                                         std::stop_token stop);
    static QCoro::Task<void> consumeResults(std::weak_ptr<Actor> weakSelf,
                                            std::shared_ptr<SpeechTranscriber> transcriber, UpdateHandler onUpdate,
                                            ErrorHandler onError, std::stop_token stop);
    static QCoro::Task<void> waitIgnoringFailure(TaskHandle task);

    std::shared_ptr<SpeechPlatform> m_platform;
    std::shared_ptr<const AudioConverterFactory> m_converters;

    // Analyzer and continuation are both set exactly while a recording is being transcribed.
    std::shared_ptr<SpeechAnalyzer> m_analyzer;
    std::shared_ptr<SpeechTranscriber> m_transcriber;
    std::optional<InputStream::Continuation> m_inputContinuation;
    TaskHandle m_analyzerTask;
    TaskHandle m_resultsTask;
    TranscriptAccumulator m_transcript;
};

QCoro::Task<ModelStatus> SpeechTranscriptionService::Actor::modelStatus(Self self, QString locale)
{
    if (!self->m_platform->isAvailable()) {
        co_return ModelStatus{};
    }
    const std::optional<QString> supported = co_await self->m_platform->supportedLocale(locale);
    if (!supported) {
        co_return ModelStatus{};
    }
    const auto transcriber =
        self->m_platform->makeTranscriber(*supported, TranscriberConfiguration::ProgressiveTranscription);
    const AssetStatus status = co_await self->m_platform->assetStatus(transcriber);
    co_return ModelStatus{true, status == AssetStatus::Installed};
}

QCoro::Task<void> SpeechTranscriptionService::Actor::installModel(Self self, QString locale)
{
    const std::optional<QString> supported = co_await self->m_platform->supportedLocale(locale);
    if (!supported) {
        throw TranscriptionError(TranscriptionError::Case::LocaleNotSupported);
    }
    const auto transcriber =
        self->m_platform->makeTranscriber(*supported, TranscriberConfiguration::ProgressiveTranscription);
    const auto request = co_await self->m_platform->assetInstallationRequest(transcriber);
    if (request) {
        co_await request->downloadAndInstall();
    }
}

QCoro::Task<void> SpeechTranscriptionService::Actor::start(Self self, std::shared_ptr<RecorderService> recorder,
                                                           QString locale, UpdateHandler onUpdate, ErrorHandler onError)
{
    const auto platform = self->m_platform;
    if (!platform->isAvailable()) {
        throw TranscriptionError(TranscriptionError::Case::OnDeviceUnavailable);
    }
    const std::optional<QString> supported = co_await platform->supportedLocale(locale);
    if (!supported) {
        throw TranscriptionError(TranscriptionError::Case::LocaleNotSupported);
    }
    const auto transcriber = platform->makeTranscriber(*supported, TranscriberConfiguration::VolatileResults);
    const AssetStatus status = co_await platform->assetStatus(transcriber);
    if (status != AssetStatus::Installed) {
        throw TranscriptionError(TranscriptionError::Case::ModelAssetsNotInstalled);
    }
    const std::optional<AudioFormat> format = co_await platform->bestAvailableAudioFormat(transcriber);
    if (!format) {
        throw TranscriptionError(TranscriptionError::Case::NoCompatibleAudioFormat);
    }
    self->open(std::move(recorder), transcriber, *format, std::move(onUpdate), std::move(onError));
}

/// Nothing below suspends. If the recorder fails to start, the state set here remains until a cancel or the next start.
void SpeechTranscriptionService::Actor::open(std::shared_ptr<RecorderService> recorder,
                                             std::shared_ptr<SpeechTranscriber> transcriber,
                                             const AudioFormat &targetFormat, UpdateHandler onUpdate,
                                             ErrorHandler onError)
{
    const auto analyzer = m_platform->makeAnalyzer(transcriber);
    const auto stream = InputStream::make();
    m_transcriber = transcriber;
    m_analyzer = analyzer;
    m_inputContinuation = stream.second;
    m_transcript = TranscriptAccumulator();

    auto box = std::make_shared<LazyAudioConverterBox>();
    box->factory = m_converters;
    box->targetFormat = targetFormat;
    // The capture thread converts and enqueues without touching the actor's state. Buffers that arrive before the
    // analyzer reads wait in the stream.
    recorder->start([box, continuation = stream.second](const auto &buffer, const AudioTime &) {
        handleTapBuffer(*box, continuation, buffer);
    });

    m_analyzerTask = launch(*executor, [analyzer, input = stream.first](std::stop_token stop) {
        return runAnalyzer(analyzer, input, stop);
    });
    m_resultsTask = launch(*executor, [weakSelf = weak_from_this(), transcriber, onUpdate = std::move(onUpdate),
                                       onError = std::move(onError)](std::stop_token stop) {
        return consumeResults(weakSelf, transcriber, onUpdate, onError, stop);
    });
}

QCoro::Task<void> SpeechTranscriptionService::Actor::runAnalyzer(std::shared_ptr<SpeechAnalyzer> analyzer,
                                                                 InputStream input, std::stop_token stop)
{
    co_await analyzer->start(input, stop);
}

/// Keeps the actor alive until the results end. Each result is folded in here, then published on the main thread,
/// before the next one is read.
QCoro::Task<void> SpeechTranscriptionService::Actor::consumeResults(std::weak_ptr<Actor> weakSelf,
                                                                    std::shared_ptr<SpeechTranscriber> transcriber,
                                                                    UpdateHandler onUpdate, ErrorHandler onError,
                                                                    std::stop_token stop)
{
    const auto self = weakSelf.lock();
    if (!self) {
        co_return;
    }
    const auto results = transcriber->results();
    std::exception_ptr failure;
    try {
        while (const std::optional<SpeechResult> result = co_await results.next()) {
            if (stop.stop_requested()) {
                co_return;
            }
            self->m_transcript.apply(result->text, result->isFinal);
            const QString combined = self->m_transcript.combinedText();
            if (!combined.isEmpty()) {
                const QFuture<void> published = self->mainExecutor->call([onUpdate, combined] { onUpdate(combined); });
                co_await published;
            }
        }
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure && !stop.stop_requested()) {
        const QFuture<void> reported = self->mainExecutor->call([onError, failure] { onError(failure); });
        co_await reported;
    }
}

QCoro::Task<QString> SpeechTranscriptionService::Actor::stop(Self self)
{
    const auto analyzer = self->m_analyzer;
    const auto continuation = self->m_inputContinuation;
    if (!analyzer || !continuation) {
        throw TranscriptionError(TranscriptionError::Case::NotRecording);
    }
    // The order matters: end the input, finish processing it, drain both tasks, read the text.
    continuation->finish();
    co_await analyzer->finalizeAndFinishThroughEndOfInput();
    if (self->m_analyzerTask) {
        co_await waitIgnoringFailure(self->m_analyzerTask);
    }
    if (self->m_resultsTask) {
        co_await waitIgnoringFailure(self->m_resultsTask);
    }
    const QString text = Text::trimWhitespaceAndNewlines(self->m_transcript.combinedText());
    self->clear();
    co_return text;
}

QCoro::Task<void> SpeechTranscriptionService::Actor::cancel(Self self)
{
    if (const auto continuation = self->m_inputContinuation) {
        continuation->finish();
    }
    self->m_analyzerTask.cancel();
    self->m_resultsTask.cancel();
    if (const auto analyzer = self->m_analyzer) {
        try {
            co_await analyzer->cancelAndFinishNow();
        } catch (...) { // NOLINT(bugprone-empty-catch): failures of an abandoned analyzer do not matter.
        }
    }
    self->clear();
}

QCoro::Task<void> SpeechTranscriptionService::Actor::waitIgnoringFailure(TaskHandle task)
{
    try {
        co_await task.finished();
    } catch (...) { // NOLINT(bugprone-empty-catch): result errors have already gone to onError.
    }
}

void SpeechTranscriptionService::Actor::clear()
{
    m_analyzer.reset();
    m_transcriber.reset();
    m_inputContinuation.reset();
    m_analyzerTask = {};
    m_resultsTask = {};
}

SpeechTranscriptionService::SpeechTranscriptionService(std::shared_ptr<SpeechPlatform> platform,
                                                       std::shared_ptr<const AudioConverterFactory> converters,
                                                       std::shared_ptr<SerialExecutor> executor,
                                                       std::shared_ptr<SerialExecutor> mainExecutor)
    : m_actor(std::make_shared<Actor>(std::move(platform), std::move(converters), std::move(executor),
                                      std::move(mainExecutor)))
{
}

SpeechTranscriptionService::~SpeechTranscriptionService() = default;

QCoro::Task<ModelStatus> SpeechTranscriptionService::modelStatus(QString locale)
{
    const auto actor = m_actor;
    return await<ModelStatus>(
        actor->executor->run<ModelStatus>([actor, locale] { return Actor::modelStatus(actor, locale); }));
}

QCoro::Task<void> SpeechTranscriptionService::installModel(QString locale)
{
    const auto actor = m_actor;
    return await<void>(actor->executor->run<void>([actor, locale] { return Actor::installModel(actor, locale); }));
}

QCoro::Task<void> SpeechTranscriptionService::startTranscription(std::shared_ptr<RecorderService> recorder,
                                                                 QString locale, UpdateHandler onUpdate,
                                                                 ErrorHandler onError)
{
    const auto actor = m_actor;
    return await<void>(
        actor->executor->run<void>([=] { return Actor::start(actor, recorder, locale, onUpdate, onError); }));
}

QCoro::Task<QString> SpeechTranscriptionService::stopTranscription()
{
    const auto actor = m_actor;
    return await<QString>(actor->executor->run<QString>([actor] { return Actor::stop(actor); }));
}

QCoro::Task<void> SpeechTranscriptionService::cancelTranscription()
{
    const auto actor = m_actor;
    return await<void>(actor->executor->run<void>([actor] { return Actor::cancel(actor); }));
}

} // namespace talmo
