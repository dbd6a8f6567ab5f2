#pragma once

#include "Recognition/EnginePlatform.h"
#include "Recognition/PocketSphinx/PocketSphinxDecoderPool.h"
#include "Recognition/PocketSphinx/PocketSphinxRecording.h"

#include <memory>
#include <optional>

namespace talmo {

/// The recogniser that every machine has: PocketSphinx with Debian's English model.
class PocketSphinxPlatform final : public EnginePlatform {
public:
    /// `executor`: the thread on which everything is decoded. An empty folder stands for Debian's. Without knowledge
    /// of microphones it takes all for the same one, and forgets what it learnt when it goes.
    explicit PocketSphinxPlatform(std::shared_ptr<SerialExecutor> executor, const QString &modelFolder = {},
                                  MicrophoneKnowledge microphone = {});

    static QString debianModelFolder();

    QFuture<std::optional<QString>> supportedLocale(const QString &locale) override;
    QFuture<std::shared_ptr<AssetInstallationRequest>>
    assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber) override;

    /// The user's own words, from the next recording on. Any thread.
    void setVocabulary(const PersonalVocabulary &vocabulary) { m_pool->setVocabulary(vocabulary); }

    /// Gives the memory of a model that is not in use back. Any thread.
    void unload();

    /// Whether a model waits in memory for the next recording. Any thread.
    bool isLoaded() const { return m_pool->keepsOne(); }

    /// How many times the model has been loaded. Any thread.
    int loadCount() const { return m_pool->loadCount(); }

    /// Loads the model ahead of a recording that may come, unless one is in use. Any thread, returns at once, fails
    /// silently.
    void warmUp();

protected:
    bool isInstalled() const override;
    MakeRecordingDecoder decoderMaker() override;

private:
    std::shared_ptr<PocketSphinxDecoderPool> m_pool;
    MicrophoneKnowledge m_microphone;
};

/// The model's locale for any kind of English, and for a system that names no language at all ("C", "POSIX").
std::optional<QString> englishModelLocale(const QString &locale);

} // namespace talmo
