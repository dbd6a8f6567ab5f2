#pragma once

#include "Base/Error.h"
#include "Recognition/SpeechEngine.h"

#include <deque>
#include <utility>
#include <vector>

namespace talmo::test {

/// Publishes given results, those of one buffer after the other.
class ScriptedEngine final : public SpeechEngine {
public:
    using Results = std::vector<SpeechResult>;

    ScriptedEngine(QString name, bool isStreaming)
        : m_name(std::move(name)),
          m_isStreaming(isStreaming)
    {
    }

    QString id() const override { return m_name; }
    QString description() const override { return m_name; }
    QStringList languages() const override { return {language}; }
    bool speaks(const QString &locale) const override { return locale.startsWith(language); }
    bool isStreaming() const override { return m_isStreaming; }
    QString problem() const override { return currentProblem; }
    void refuse(const QString &problem) override { currentProblem = problem; }
    QStringList files() const override { return {}; }
    void setVocabulary(const PersonalVocabulary & /*vocabulary*/) override {}
    std::unique_ptr<RecordingDecoder> makeDecoder(RecordingDecoder::Publish publish) override
    {
        struct Decoder final : RecordingDecoder {
            Decoder(ScriptedEngine &scripted, Publish publishResult)
                : engine(scripted),
                  publish(std::move(publishResult))
            {
            }
            void process(std::span<const std::int16_t> /*samples*/) override { next(); }
            void finish() override { next(); }
            void next()
            {
                if (engine.fails) {
                    throw Error(QStringLiteral("it failed"));
                }
                const Results results = engine.script.empty() ? Results() : engine.script.front();
                if (!engine.script.empty()) {
                    engine.script.pop_front();
                }
                for (const auto &result : results) {
                    publish(result);
                }
            }
            ScriptedEngine &engine;
            Publish publish;
        };
        ++decoders;
        return std::make_unique<Decoder>(*this, std::move(publish));
    }
    void warmUp() override { isLoaded = true; }
    void unload() override { isLoaded = false; }

    std::deque<Results> script;
    QString language = QStringLiteral("en");
    QString currentProblem;
    bool fails = false;
    bool isLoaded = false;
    int decoders = 0;

private:
    QString m_name;
    bool m_isStreaming;
};

} // namespace talmo::test
