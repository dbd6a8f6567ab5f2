#pragma once

#include "Speech/SpeechPlatform.h"

#include <memory>
#include <mutex>
#include <vector>

namespace talmo {

/// Several recognisers as one: each locale is recognised by the first that can do it and has what it needs.
class ChosenSpeechPlatform final : public SpeechPlatform {
public:
    /// The best first; never empty.
    explicit ChosenSpeechPlatform(std::vector<std::shared_ptr<SpeechPlatform>> platforms);

    /// Others from now on; a recording that is going on keeps its own. Any thread.
    void setPlatforms(std::vector<std::shared_ptr<SpeechPlatform>> platforms);

    bool isAvailable() const override;
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
    struct Choice;
    std::optional<Choice> choose(const QString &locale) const;

    std::vector<std::shared_ptr<SpeechPlatform>> platforms() const;

    mutable std::mutex m_mutex;
    std::vector<std::shared_ptr<SpeechPlatform>> m_platforms;
};

} // namespace talmo
