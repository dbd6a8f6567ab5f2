#pragma once

#include "Base/Completion.h"
#include "Speech/SpeechPlatform.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace talmo::test {

/// A speech platform that does as the test tells it and records its calls.
class ScriptedSpeechPlatform final : public SpeechPlatform {
public:
    using Results = AsyncStream<SpeechResult>;

    class Transcriber final : public SpeechTranscriber {
    public:
        AsyncStream<SpeechResult> results() const override { return stream.first; }
        std::pair<Results, Results::Continuation> stream = Results::make();
    };

    /// Ends like a real one: start() when the input ends or a stop is requested; the results when it is finalised,
    /// cancelled or destroyed.
    class Analyzer final : public SpeechAnalyzer {
    public:
        Analyzer(ScriptedSpeechPlatform &platform, std::shared_ptr<Transcriber> transcriber)
            : m_platform(platform),
              m_transcriber(std::move(transcriber))
        {
            ++m_platform.livingAnalyzers;
        }
        ~Analyzer() override
        {
            --m_platform.livingAnalyzers;
            m_transcriber->stream.second.finish();
        }
        QFuture<void> start(AsyncStream<AnalyzerInput> input, std::stop_token stop) override
        {
            m_platform.calls.emplace_back("analyzer.start");
            m_platform.lastStop = stop;
            if (m_platform.onStart) {
                return m_platform.onStart();
            }
            if (m_platform.startFailure) {
                return makeFailedFuture<void>(m_platform.startFailure);
            }
            readAll(input, m_started, m_platform.receivedBuffers);
            return m_started->future();
        }
        QFuture<void> finalizeAndFinishThroughEndOfInput() override
        {
            m_platform.calls.emplace_back("finalize");
            if (m_platform.onFinalize) {
                return m_platform.onFinalize();
            }
            yield(m_platform.finalResult, true);
            m_transcriber->stream.second.finish(m_platform.resultsFailure);
            return makeReadyFuture();
        }
        QFuture<void> cancelAndFinishNow() override
        {
            m_platform.calls.emplace_back("cancelAndFinishNow");
            if (m_platform.onCancel) {
                return m_platform.onCancel();
            }
            m_transcriber->stream.second.finish();
            return makeReadyFuture();
        }
        void yield(const QString &text, bool isFinal)
        {
            if (!text.isNull()) {
                m_transcriber->stream.second.yield({text, isFinal});
            }
        }

    private:
        static void readAll(const AsyncStream<AnalyzerInput> &input, const std::shared_ptr<Completion<void>> &started,
                            const std::shared_ptr<int> &count)
        {
            input.next([input, started, count](std::optional<AnalyzerInput> value, const std::exception_ptr &) {
                if (value) {
                    ++*count;
                    readAll(input, started, count);
                } else {
                    started->finish();
                }
            });
        }
        ScriptedSpeechPlatform &m_platform;
        std::shared_ptr<Transcriber> m_transcriber;
        std::shared_ptr<Completion<void>> m_started = Completion<void>::make();
    };

    std::vector<std::string> calls;
    bool available = true;
    std::optional<QString> supported = QStringLiteral("en_US");
    AssetStatus status = AssetStatus::Installed;
    std::optional<AudioFormat> format = AudioFormat{16000, 1, SampleType::Int16};
    std::function<QFuture<std::shared_ptr<AssetInstallationRequest>>()> onRequest;
    std::function<QFuture<void>()> onStart;
    std::function<QFuture<void>()> onFinalize;
    std::function<QFuture<void>()> onCancel;
    /// The stop token passed to the last analyzer.
    std::stop_token lastStop;
    /// Null: finalising publishes no result.
    QString finalResult;
    std::exception_ptr resultsFailure;
    std::exception_ptr startFailure;
    std::shared_ptr<int> receivedBuffers = std::make_shared<int>(0);
    int livingAnalyzers = 0;
    std::weak_ptr<Analyzer> lastAnalyzer;
    std::weak_ptr<Transcriber> lastTranscriber;

    /// A recording lives until its results end.
    void endResults() const
    {
        if (const auto transcriber = lastTranscriber.lock()) {
            transcriber->stream.second.finish();
        }
    }
    bool isAvailable() const override { return available; }
    QFuture<std::optional<QString>> supportedLocale(const QString &locale) override
    {
        calls.push_back("supportedLocale " + locale.toStdString());
        return makeReadyFuture(std::optional(supported));
    }
    std::shared_ptr<SpeechTranscriber> makeTranscriber(const QString &locale,
                                                       TranscriberConfiguration configuration) override
    {
        const bool isPreset = configuration == TranscriberConfiguration::ProgressiveTranscription;
        calls.push_back("makeTranscriber " + locale.toStdString() + (isPreset ? " preset" : " volatile"));
        auto transcriber = std::make_shared<Transcriber>();
        lastTranscriber = transcriber;
        return transcriber;
    }
    QFuture<AssetStatus> assetStatus(const std::shared_ptr<SpeechTranscriber> &) override
    {
        calls.emplace_back("assetStatus");
        return makeReadyFuture(AssetStatus(status));
    }
    QFuture<std::shared_ptr<AssetInstallationRequest>>
    assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &) override
    {
        calls.emplace_back("assetInstallationRequest");
        return onRequest();
    }
    QFuture<std::optional<AudioFormat>> bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> &) override
    {
        calls.emplace_back("bestAvailableAudioFormat");
        return makeReadyFuture(std::optional(format));
    }
    std::shared_ptr<SpeechAnalyzer> makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber) override
    {
        calls.emplace_back("makeAnalyzer");
        auto analyzer = std::make_shared<Analyzer>(*this, std::dynamic_pointer_cast<Transcriber>(transcriber));
        lastAnalyzer = analyzer;
        return analyzer;
    }
};

} // namespace talmo::test
