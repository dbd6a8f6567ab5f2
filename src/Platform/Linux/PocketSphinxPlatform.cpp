#include "Platform/Linux/PocketSphinxPlatform.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Platform/Linux/EngineAnalyzer.h"

#include <QRegularExpression>

#include <utility>

namespace talmo {

namespace {

/// The model is a package of the system, and packages are not Talmo's to install.
class PackageInstallationRequest final : public AssetInstallationRequest {
public:
    QFuture<void> downloadAndInstall() override
    {
        return failed<void>(std::make_exception_ptr(
            Error(QStringLiteral("The speech model isn't installed. Install the package pocketsphinx-en-us."))));
    }
};

} // namespace

std::optional<QString> englishModelLocale(const QString &locale)
{
    static const QRegularExpression english(
        QRegularExpression::anchoredPattern(QStringLiteral("en([_-][A-Za-z0-9]{2,8})*(\\.[A-Za-z0-9-]+)?(@[a-z]+)?")));
    // A machine without a language speaks the one its messages are written in.
    static const QRegularExpression unnamed(
        QRegularExpression::anchoredPattern(QStringLiteral("(C|POSIX)(\\.[A-Za-z0-9-]+)?")));
    if (english.match(locale).hasMatch() || unnamed.match(locale).hasMatch()) {
        return QStringLiteral("en_US");
    }
    return std::nullopt;
}

QString PocketSphinxPlatform::debianModelFolder()
{
    return QStringLiteral(TALMO_POCKETSPHINX_MODEL_DIR);
}

PocketSphinxPlatform::PocketSphinxPlatform(std::shared_ptr<SerialExecutor> executor, const QString &modelFolder,
                                           MicrophoneKnowledge microphone)
    : m_executor(std::move(executor)),
      m_pool(std::make_shared<PocketSphinxDecoderPool>(modelFolder.isEmpty() ? debianModelFolder() : modelFolder)),
      m_microphone(std::move(microphone))
{
    if (!m_microphone.memory) {
        m_microphone.memory = std::make_shared<MicrophoneMemory>();
    }
}

QFuture<std::optional<QString>> PocketSphinxPlatform::supportedLocale(const QString &locale)
{
    return ready(englishModelLocale(locale));
}

std::shared_ptr<SpeechTranscriber> PocketSphinxPlatform::makeTranscriber(const QString & /*supportedLocale*/,
                                                                         TranscriberConfiguration /*configuration*/)
{
    return std::make_shared<EngineTranscriber>();
}

QFuture<AssetStatus> PocketSphinxPlatform::assetStatus(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    return ready(PocketSphinxDecoder::isModelInstalled(m_pool->modelFolder()) ? AssetStatus::Installed
                                                                              : AssetStatus::Supported);
}

QFuture<std::shared_ptr<AssetInstallationRequest>>
PocketSphinxPlatform::assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    std::shared_ptr<AssetInstallationRequest> request;
    if (!PocketSphinxDecoder::isModelInstalled(m_pool->modelFolder())) {
        request = std::make_shared<PackageInstallationRequest>();
    }
    return ready(std::move(request));
}

QFuture<std::optional<AudioFormat>>
PocketSphinxPlatform::bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    return ready(std::optional(AudioFormat{PocketSphinxDecoder::sampleRate, 1, SampleType::Int16}));
}

std::shared_ptr<SpeechAnalyzer>
PocketSphinxPlatform::makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    auto ours = std::dynamic_pointer_cast<EngineTranscriber>(transcriber);
    return std::make_shared<EngineAnalyzer>(
        std::move(ours),
        [pool = m_pool, microphone = m_microphone](RecordingDecoder::Publish publish) {
            return std::make_unique<PocketSphinxRecording>(pool, microphone, std::move(publish));
        },
        m_executor);
}

void PocketSphinxPlatform::unload()
{
    m_executor->post([pool = m_pool] { pool->unload(); });
}

void PocketSphinxPlatform::warmUp()
{
    m_executor->post([pool = m_pool] {
        try {
            pool->giveBack(pool->take());
        } catch (const Error &) { // NOLINT(bugprone-empty-catch): the recording meets the same and tells the user.
        }
    });
}

} // namespace talmo
