#pragma once

#include "Recognition/Models/ModelCatalogue.h"
#include "Speech/SpeechPlatform.h"

#include <functional>
#include <memory>

namespace talmo {

/// Stands behind the recognisers that are there, for the languages that none of them speaks: it recognises nothing, but
/// knows which models could be had, and has them installed.
class CatalogueSpeechPlatform final : public SpeechPlatform {
public:
    /// Installs a model for a locale's language. Any thread; finishes when it can be used.
    using Install = std::function<QFuture<void>(const QString &locale)>;

    CatalogueSpeechPlatform(ModelCatalogue catalogue, Install install);

    bool isAvailable() const override { return true; }
    QFuture<std::optional<QString>> supportedLocale(const QString &locale) override;
    std::shared_ptr<SpeechTranscriber> makeTranscriber(const QString &supportedLocale,
                                                       TranscriberConfiguration configuration) override;
    QFuture<AssetStatus> assetStatus(const std::shared_ptr<SpeechTranscriber> &transcriber) override;
    QFuture<std::shared_ptr<AssetInstallationRequest>>
    assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber) override;
    QFuture<std::optional<AudioFormat>>
    bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> &transcriber) override;
    std::shared_ptr<SpeechAnalyzer> makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber) override;

private:
    ModelCatalogue m_catalogue;
    Install m_install;
};

} // namespace talmo
