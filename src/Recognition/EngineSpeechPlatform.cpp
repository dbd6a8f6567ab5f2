#include "Recognition/EngineSpeechPlatform.h"

#include "Base/Completion.h"
#include "Base/Error.h"
#include "Recognition/EngineAnalyzer.h"
#include "Speech/TranscriptionError.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

/// Binds a recording to the engine that was the best when the transcriber was made.
class EngineTranscriber final : public SpeechTranscriber {
public:
    /// `speechEngine`: null while no engine speaks the language.
    EngineTranscriber(QString wantedLocale, std::shared_ptr<SpeechEngine> speechEngine)
        : locale(std::move(wantedLocale)),
          engine(std::move(speechEngine))
    {
    }

    AsyncStream<SpeechResult> results() const override { return stream.first; }

    const QString locale;
    const std::shared_ptr<SpeechEngine> engine;
    const std::pair<AsyncStream<SpeechResult>, AsyncStream<SpeechResult>::Continuation> stream =
        AsyncStream<SpeechResult>::make();
};

/// This platform is handed back only transcribers that it made.
const EngineTranscriber &own(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return static_cast<const EngineTranscriber &>(*transcriber);
}

class InstallationRequest final : public AssetInstallationRequest {
public:
    explicit InstallationRequest(std::function<QFuture<void>()> install)
        : m_install(std::move(install))
    {
    }

    QFuture<void> downloadAndInstall() override { return m_install(); }

private:
    std::function<QFuture<void>()> m_install;
};

std::function<QFuture<void>()> failingWith(const QString &message)
{
    return [message] { return makeFailedFuture<void>(std::make_exception_ptr(Error(message))); };
}

} // namespace

EngineSpeechPlatform::EngineSpeechPlatform(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                                           std::optional<ModelSource> source)
    : m_executor(std::move(executor)),
      m_clock(std::move(clock)),
      m_source(std::move(source))
{
}

void EngineSpeechPlatform::setEngines(std::vector<std::shared_ptr<SpeechEngine>> engines)
{
    const std::scoped_lock lock(m_mutex);
    m_engines.swap(engines);
}

/// An unusable engine for the language is better than none: it reports the reason.
std::shared_ptr<SpeechEngine> EngineSpeechPlatform::engineFor(const QString &locale) const
{
    const std::scoped_lock lock(m_mutex);
    std::shared_ptr<SpeechEngine> unusable;
    for (const auto &engine : m_engines) {
        if (!engine->speaks(locale)) {
            continue;
        }
        if (engine->problem().isEmpty()) {
            return engine;
        }
        unusable = unusable ? unusable : engine;
    }
    return unusable;
}

/// The locale is passed on unchanged: each engine knows which of its languages is meant.
QFuture<std::optional<QString>> EngineSpeechPlatform::supportedLocale(const QString &locale)
{
    const bool isSupported = engineFor(locale) || (m_source && m_source->hasModelFor(locale));
    return makeReadyFuture(isSupported ? std::optional(locale) : std::nullopt);
}

std::shared_ptr<SpeechTranscriber> EngineSpeechPlatform::makeTranscriber(const QString &supportedLocale,
                                                                         TranscriberConfiguration /*configuration*/)
{
    return std::make_shared<EngineTranscriber>(supportedLocale, engineFor(supportedLocale));
}

QFuture<AssetStatus> EngineSpeechPlatform::assetStatus(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    const auto &engine = own(transcriber).engine;
    return makeReadyFuture(engine && engine->problem().isEmpty() ? AssetStatus::Installed : AssetStatus::Supported);
}

QFuture<std::shared_ptr<AssetInstallationRequest>>
EngineSpeechPlatform::assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    const auto &[locale, engine] = std::tie(own(transcriber).locale, own(transcriber).engine);
    std::shared_ptr<AssetInstallationRequest> request;
    if (const QString problem = engine ? engine->problem() : QString(); !problem.isEmpty()) {
        request = std::make_shared<InstallationRequest>(failingWith(problem));
    } else if (!engine && m_source) {
        request =
            std::make_shared<InstallationRequest>([install = m_source->install, locale] { return install(locale); });
    }
    return makeReadyFuture(std::move(request));
}

QFuture<std::optional<AudioFormat>>
EngineSpeechPlatform::bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return makeReadyFuture(own(transcriber).engine
                               ? std::optional(AudioFormat{RecordingDecoder::sampleRate, 1, SampleType::Int16})
                               : std::nullopt);
}

std::shared_ptr<SpeechAnalyzer>
EngineSpeechPlatform::makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    const auto &engine = own(transcriber).engine;
    if (!engine) {
        throw TranscriptionError(TranscriptionError::Case::ModelAssetsNotInstalled);
    }
    const auto makeDecoder = [engine, locale = own(transcriber).locale](RecordingDecoder::Publish publish) {
        return engine->makeDecoderFor(locale, std::move(publish));
    };
    return std::make_shared<EngineAnalyzer>(own(transcriber).stream.second, makeDecoder, m_executor, m_clock);
}

} // namespace talmo
