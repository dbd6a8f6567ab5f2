#include "Recognition/CatalogueSpeechPlatform.h"

#include "Base/Completion.h"
#include "Speech/TranscriptionError.h"

#include <utility>

namespace talmo {

namespace {

/// Remembers what it was made for; nothing is ever heard through it.
class MissingTranscriber final : public SpeechTranscriber {
public:
    explicit MissingTranscriber(QString wanted)
        : locale(std::move(wanted))
    {
    }

    AsyncStream<SpeechResult> results() const override
    {
        auto [stream, continuation] = AsyncStream<SpeechResult>::make();
        continuation.finish();
        return stream;
    }

    const QString locale;
};

class CatalogueInstallationRequest final : public AssetInstallationRequest {
public:
    CatalogueInstallationRequest(QString locale, CatalogueSpeechPlatform::Install install)
        : m_locale(std::move(locale)),
          m_install(std::move(install))
    {
    }

    QFuture<void> downloadAndInstall() override { return m_install(m_locale); }

private:
    QString m_locale;
    CatalogueSpeechPlatform::Install m_install;
};

} // namespace

CatalogueSpeechPlatform::CatalogueSpeechPlatform(ModelCatalogue catalogue, Install install)
    : m_catalogue(std::move(catalogue)),
      m_install(std::move(install))
{
}

QFuture<std::optional<QString>> CatalogueSpeechPlatform::supportedLocale(const QString &locale)
{
    return ready(m_catalogue.bestFor(locale) != nullptr ? std::optional(locale) : std::nullopt);
}

std::shared_ptr<SpeechTranscriber> CatalogueSpeechPlatform::makeTranscriber(const QString &supportedLocale,
                                                                            TranscriberConfiguration /*configuration*/)
{
    return std::make_shared<MissingTranscriber>(supportedLocale);
}

QFuture<AssetStatus> CatalogueSpeechPlatform::assetStatus(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    return ready(AssetStatus::Supported);
}

QFuture<std::shared_ptr<AssetInstallationRequest>>
CatalogueSpeechPlatform::assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    const QString locale = dynamic_cast<const MissingTranscriber &>(*transcriber).locale;
    return ready(
        std::shared_ptr<AssetInstallationRequest>(std::make_shared<CatalogueInstallationRequest>(locale, m_install)));
}

QFuture<std::optional<AudioFormat>>
CatalogueSpeechPlatform::bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    return ready(std::optional<AudioFormat>());
}

/// Nobody gets here, since nothing is installed; whoever does hears why.
std::shared_ptr<SpeechAnalyzer>
CatalogueSpeechPlatform::makeAnalyzer(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    throw TranscriptionError(TranscriptionError::Case::ModelAssetsNotInstalled);
}

} // namespace talmo
