#pragma once

#include "Recognition/PocketSphinx/PocketSphinxDecoderPool.h"
#include "Recognition/PocketSphinx/PocketSphinxRecording.h"
#include "Recognition/Signal/InstalledVoiceActivity.h"
#include "Recognition/SpeechEngine.h"

#include <memory>
#include <mutex>
#include <optional>

namespace talmo {

/// The embedded engine: PocketSphinx with Debian's English model.
class PocketSphinxEngine final : public SpeechEngine {
public:
    /// An empty folder means Debian's. Without `microphone`, all microphones count as the same one, and the
    /// calibration is lost with this object.
    explicit PocketSphinxEngine(const QString &modelFolder = {}, MicrophoneKnowledge microphone = {},
                                InstalledVoiceActivity activity = InstalledVoiceActivity());

    static QString debianModelFolder();

    QString id() const override { return embeddedId(); }
    QString description() const override;
    QStringList languages() const override { return {QStringLiteral("en")}; }
    bool speaks(const QString &locale) const override;
    QString problem() const override;
    void refuse(const QString &problem) override;
    QStringList files() const override;
    void setVocabulary(const PersonalVocabulary &vocabulary) override { m_pool->setVocabulary(vocabulary); }
    std::unique_ptr<RecordingDecoder> makeDecoder(RecordingDecoder::Publish publish) override;
    void warmUp() override;
    void unload() override;

    /// Whether a decoder is kept in memory for the next recording. Any thread.
    bool isLoaded() const { return m_pool->keepsOne(); }
    /// The number of times the model has been loaded. Any thread.
    int loadCount() const { return m_pool->loadCount(); }

private:
    void requireUsable() const;

    std::shared_ptr<PocketSphinxDecoderPool> m_pool;
    MicrophoneKnowledge m_microphone;
    InstalledVoiceActivity m_activity;
    mutable std::mutex m_mutex;
    QString m_refusal;
};

/// The model's locale for any kind of English, and for a system without a language ("C", "POSIX").
std::optional<QString> englishModelLocale(const QString &locale);

} // namespace talmo
