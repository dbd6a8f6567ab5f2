#pragma once

#include "Recognition/Sherpa/SherpaLibrary.h"
#include "Recognition/Sherpa/SherpaModel.h"
#include "Recognition/SpeechEngine.h"

#include <QStringList>

#include <memory>

namespace talmo {

/// sherpa-onnx with one streaming model.
class SherpaEngine final : public SpeechEngine {
public:
    /// Throws Error if the model is unusable, as far as can be determined without loading it.
    SherpaEngine(QString name, std::shared_ptr<SherpaLibrary> library, const QString &modelFolder);

    QString id() const override { return m_name; }
    QString description() const override;
    QStringList languages() const override { return m_model.languages; }
    bool speaks(const QString &locale) const override;
    bool isStreaming() const override { return m_model.isStreaming(); }
    QString problem() const override;
    void refuse(const QString &problem) override;
    QStringList files() const override;
    void setVocabulary(const PersonalVocabulary &vocabulary) override;
    std::unique_ptr<RecordingDecoder> makeDecoder(RecordingDecoder::Publish publish) override;
    std::unique_ptr<RecordingDecoder> makeDecoderFor(const QString &locale, RecordingDecoder::Publish publish) override;
    std::unique_ptr<RecordingDecoder> makeTrialDecoder(RecordingDecoder::Publish publish) override;
    void warmUp() override;
    void unload() override;

private:
    class LoadedModel;

    QString m_name;
    SherpaModel m_model;
    std::shared_ptr<LoadedModel> m_loaded;
};

} // namespace talmo
