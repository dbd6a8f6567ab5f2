#pragma once

#include "Recognition/SpeechEngine.h"

#include <memory>
#include <vector>

namespace talmo {

/// Takes the text from one engine, and shows another engine's live text until then.
///
/// The first engine's text replaces the second one's, stretch by stretch.
class LiveAndFinalEngine final : public SpeechEngine {
public:
    /// `live`: the first one that speaks the language and can be used is taken.
    LiveAndFinalEngine(std::shared_ptr<SpeechEngine> final, std::vector<std::shared_ptr<SpeechEngine>> live);

    QString id() const override { return m_final->id(); }
    QString description() const override { return m_final->description(); }
    QStringList languages() const override { return m_final->languages(); }
    bool speaks(const QString &locale) const override { return m_final->speaks(locale); }
    QString problem() const override { return m_final->problem(); }
    QStringList files() const override { return m_final->files(); }
    void refuse(const QString &problem) override { m_final->refuse(problem); }
    void setVocabulary(const PersonalVocabulary &vocabulary) override;
    std::unique_ptr<RecordingDecoder> makeDecoder(RecordingDecoder::Publish publish) override;
    std::unique_ptr<RecordingDecoder> makeDecoderFor(const QString &locale, RecordingDecoder::Publish publish) override;
    std::unique_ptr<RecordingDecoder> makeTrialDecoder(RecordingDecoder::Publish publish) override;
    void warmUp() override { m_final->warmUp(); }
    void warmUpFor(const QString &locale) override;
    void unload() override;

private:
    std::shared_ptr<SpeechEngine> liveFor(const QString &locale) const;

    std::shared_ptr<SpeechEngine> m_final;
    std::vector<std::shared_ptr<SpeechEngine>> m_live;
};

} // namespace talmo
