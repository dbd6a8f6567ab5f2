#include "Recognition/PocketSphinx/PocketSphinxPlatform.h"

#include "Base/Error.h"
#include "Base/Log.h"

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
    : EnginePlatform(std::move(executor)),
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

bool PocketSphinxPlatform::isInstalled() const
{
    return PocketSphinxDecoder::isModelInstalled(m_pool->modelFolder());
}

QFuture<std::shared_ptr<AssetInstallationRequest>>
PocketSphinxPlatform::assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    std::shared_ptr<AssetInstallationRequest> request;
    if (!isInstalled()) {
        request = std::make_shared<PackageInstallationRequest>();
    }
    return ready(std::move(request));
}

MakeRecordingDecoder PocketSphinxPlatform::decoderMaker()
{
    return [pool = m_pool, microphone = m_microphone](RecordingDecoder::Publish publish) {
        return std::make_unique<PocketSphinxRecording>(pool, microphone, std::move(publish));
    };
}

void PocketSphinxPlatform::unload()
{
    executor().post([pool = m_pool] { pool->unload(); });
}

void PocketSphinxPlatform::warmUp()
{
    executor().post([pool = m_pool] {
        try {
            pool->warmUp();
        } catch (const Error &) { // NOLINT(bugprone-empty-catch): the recording meets the same and tells the user.
        }
    });
}

} // namespace talmo
