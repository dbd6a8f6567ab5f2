#pragma once

#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Recognition/SpeechEngine.h"
#include "Speech/SpeechPlatform.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace talmo {

/// All engines of this machine as one recogniser: the first one that speaks a locale's language and can be used gets
/// the recording.
class EngineSpeechPlatform final : public SpeechPlatform {
public:
    /// Where models for more languages come from.
    struct ModelSource {
        std::function<bool(const QString &locale)> hasModelFor;
        /// Finishes once an engine for that locale can be used. Any thread.
        std::function<QFuture<void>(const QString &locale)> install;
    };

    /// `executor`: the decoder thread. `source`: none if nothing can be installed.
    EngineSpeechPlatform(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                         std::optional<ModelSource> source = std::nullopt);

    /// Replaces the engines, best first. A recording in progress keeps its own. Any thread.
    void setEngines(std::vector<std::shared_ptr<SpeechEngine>> engines);

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
    std::shared_ptr<SpeechEngine> engineFor(const QString &locale) const;

    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Clock> m_clock;
    std::optional<ModelSource> m_source;
    mutable std::mutex m_mutex;
    std::vector<std::shared_ptr<SpeechEngine>> m_engines;
};

} // namespace talmo
