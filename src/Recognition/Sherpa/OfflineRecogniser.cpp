#include "Recognition/Sherpa/OfflineRecogniser.h"

#include "Base/Error.h"
#include "Recognition/Sherpa/PiecewiseDecoder.h"
#include "Recognition/Sherpa/SherpaFunctions.h"
#include "Recognition/Sherpa/SileroVoiceActivity.h"
#include "Recognition/UnusableModel.h"

#include <QFile>

#include <utility>

namespace talmo {

namespace {

using Kind = SherpaModel::Kind;

/// Finds speech everywhere.
class EverythingIsSpeech final : public VoiceActivity {
public:
    bool isSpeech(std::span<const float> /*samples*/) override { return true; }
    void reset() override {}
};

struct Paths {
    QByteArray encoder;
    QByteArray decoder;
    QByteArray joiner;
    QByteArray model;
    QByteArray preprocessor;
    QByteArray cachedDecoder;
    QByteArray language;
};

void fill(OfflineModelConfig &config, Kind kind, const Paths &paths)
{
    switch (kind) {
    case Kind::OfflineTransducer:
        config.transducer = {paths.encoder.constData(), paths.decoder.constData(), paths.joiner.constData()};
        config.modelType = "nemo_transducer"; // Otherwise the library loads the encoder twice.
        return;
    case Kind::OfflineNemoCtc:
        config.nemoCtcModel = paths.model.constData();
        return;
    case Kind::Whisper:
        config.whisper.encoder = paths.encoder.constData();
        config.whisper.decoder = paths.decoder.constData();
        config.whisper.language = paths.language.constData();
        config.whisper.task = "transcribe";
        return;
    case Kind::Moonshine:
        config.moonshine.encoder = paths.encoder.constData();
        if (paths.preprocessor.isEmpty()) {
            config.moonshine.mergedDecoder = paths.decoder.constData();
        } else {
            config.moonshine.preprocessor = paths.preprocessor.constData();
            config.moonshine.uncachedDecoder = paths.decoder.constData();
            config.moonshine.cachedDecoder = paths.cachedDecoder.constData();
        }
        return;
    case Kind::SenseVoice:
        config.senseVoice = {paths.model.constData(), paths.language.constData(), 1};
        return;
    case Kind::Canary:
        config.canary = {paths.encoder.constData(), paths.decoder.constData(), paths.language.constData(),
                         paths.language.constData(), 1};
        return;
    case Kind::Transducer:
    case Kind::ZipformerCtc:
    case Kind::NemoCtc:
        return;
    }
}

} // namespace

/// The configuration refers to strings that live only during the call.
template <typename Use>
auto OfflineRecogniser::withConfig(Use use) const
{
    const auto file = [this](const QString &name) {
        return name.isEmpty() ? QByteArray() : QFile::encodeName(m_model.folder + QLatin1Char('/') + name);
    };
    const Paths paths{file(m_model.encoder), file(m_model.decoder),      file(m_model.joiner),
                      file(m_model.model),   file(m_model.preprocessor), file(m_model.cachedDecoder),
                      m_language.toLatin1()};
    const QByteArray tokens = file(m_model.tokens);
    OfflineRecogniserConfig config;
    config.model.tokens = tokens.constData();
    config.model.threadCount = sherpaThreadCount();
    fill(config.model, m_model.kind, paths);
    return use(config);
}

OfflineRecogniser::OfflineRecogniser(std::shared_ptr<SherpaLibrary> library, SherpaModel model)
    : m_library(std::move(library)),
      m_model(std::move(model)),
      m_language(toldFor(m_model.languages.first()))
{
    m_library->functions().requireOffline();
    try {
        m_handle = withConfig([this](const OfflineRecogniserConfig &config) {
            return m_library->functions().createOfflineRecogniser(&config);
        });
    } catch (...) { // NOLINT(bugprone-empty-catch): exceptions of unknown types mean the same as null.
    }
    if (m_handle == nullptr) {
        throw UnusableModel(QStringLiteral("The model in %1 could not be loaded.").arg(m_model.folder));
    }
}

OfflineRecogniser::~OfflineRecogniser()
{
    m_library->functions().destroyOfflineRecogniser(m_handle);
}

std::unique_ptr<RecordingDecoder> OfflineRecogniser::makeDecoder(Recording recording)
{
    return std::make_unique<PiecewiseDecoder>(shared_from_this(), voiceActivity(), std::move(recording));
}

std::unique_ptr<RecordingDecoder> OfflineRecogniser::makeTrialDecoder(Recording recording)
{
    if (!SileroVoiceActivity::find(m_model.folder).isEmpty()) {
        voiceActivity(); // A damaged one must be detected as well.
    }
    return std::make_unique<PiecewiseDecoder>(shared_from_this(), std::make_shared<EverythingIsSpeech>(),
                                              std::move(recording));
}

/// A recording that was given up may still hold the one of the recording before.
std::shared_ptr<VoiceActivity> OfflineRecogniser::voiceActivity()
{
    if (!m_voiceActivity || m_voiceActivity.use_count() > 1) {
        const QString path = SileroVoiceActivity::find(m_model.folder);
        if (path.isEmpty()) {
            throw UnusableModel(QStringLiteral("There is no model for voice activity beside %1.").arg(m_model.folder));
        }
        m_voiceActivity = std::make_shared<SileroVoiceActivity>(m_library, path);
    }
    m_voiceActivity->reset();
    return m_voiceActivity;
}

/// Another language needs no other model in memory.
void OfflineRecogniser::speak(const QString &language)
{
    const QString told = toldFor(language);
    if (told == m_language) {
        return;
    }
    m_language = told;
    withConfig([this](const OfflineRecogniserConfig &config) {
        sherpaGuarded([&] { m_library->functions().configureOfflineRecogniser(m_handle, &config); });
    });
}

/// Empty if the model finds out for itself.
QString OfflineRecogniser::toldFor(const QString &language) const
{
    return m_model.toldLanguages.contains(language) ? language : QString();
}

QString OfflineRecogniser::transcribe(std::span<const float> samples, const QString &language)
{
    speak(language);
    const auto &functions = m_library->functions();
    return sherpaGuarded([&] {
        const std::unique_ptr<const void, void (*)(const void *)> stream(functions.createOfflineStream(m_handle),
                                                                         functions.destroyOfflineStream);
        functions.acceptOffline(stream.get(), RecordingDecoder::sampleRate, samples.data(),
                                static_cast<std::int32_t>(samples.size()));
        functions.decodeOffline(m_handle, stream.get());
        const std::unique_ptr<const OfflineResult, void (*)(const OfflineResult *)> result(
            functions.offlineResult(stream.get()), functions.destroyOfflineResult);
        return QString::fromUtf8(result ? result->text : nullptr).trimmed();
    });
}

} // namespace talmo
