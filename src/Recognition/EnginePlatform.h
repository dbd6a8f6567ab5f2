#pragma once

#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Recognition/RecordingDecoder.h"
#include "Speech/SpeechPlatform.h"

#include <memory>

namespace talmo {

/// What all recognisers of this machine have in common: they decode what comes in one format, on one thread.
class EnginePlatform : public SpeechPlatform {
public:
    bool isAvailable() const override { return true; }
    std::shared_ptr<SpeechTranscriber> makeTranscriber(const QString &supportedLocale,
                                                       TranscriberConfiguration configuration) override;
    QFuture<AssetStatus> assetStatus(const std::shared_ptr<SpeechTranscriber> &transcriber) override;
    QFuture<std::optional<AudioFormat>>
    bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> &transcriber) override;
    std::shared_ptr<SpeechAnalyzer> makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber) override;

protected:
    /// `executor`: the thread on which everything is decoded.
    explicit EnginePlatform(std::shared_ptr<SerialExecutor> executor);

    SerialExecutor &executor() const { return *m_executor; }
    /// Whether the model is there. Any thread, and never by loading it.
    virtual bool isInstalled() const = 0;
    /// Called for each recording; what it gives back is used on the recogniser's thread and may outlive this.
    virtual MakeRecordingDecoder decoderMaker() = 0;

private:
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Clock> m_clock;
};

} // namespace talmo
