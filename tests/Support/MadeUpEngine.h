#pragma once

#include "Recognition/SpeechEngine.h"

#include <QStringList>

#include <utility>

namespace talmo::test {

/// Recognises its name in every recording. The name begins with the language.
class MadeUpEngine final : public SpeechEngine {
public:
    explicit MadeUpEngine(QString name = QStringLiteral("en-made-up"))
        : m_name(std::move(name))
    {
    }

    QString id() const override { return m_name; }
    QString description() const override { return m_name; }
    QStringList languages() const override { return {m_name.left(2)}; }
    bool speaks(const QString &locale) const override { return locale.startsWith(m_name.left(2)); }
    QString problem() const override { return currentProblem; }
    void refuse(const QString &problem) override { currentProblem = problem; }
    QStringList files() const override { return {}; }
    void setVocabulary(const PersonalVocabulary &vocabulary) override { words = vocabulary.words; }
    std::unique_ptr<RecordingDecoder> makeDecoder(RecordingDecoder::Publish publish) override
    {
        struct Decoder final : RecordingDecoder {
            Publish publish;
            QString text;
            void process(std::span<const std::int16_t>) override {}
            void finish() override { publish({text, true}); }
        };
        auto decoder = std::make_unique<Decoder>();
        decoder->publish = std::move(publish);
        decoder->text = m_name;
        return decoder;
    }
    void warmUp() override { isLoaded = true; }
    void unload() override { isLoaded = false; }

    QString currentProblem;
    QStringList words;
    bool isLoaded = false;

private:
    QString m_name;
};

} // namespace talmo::test
